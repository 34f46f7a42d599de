#include "host/folders/FolderSource.h"

#include "framework/interfaces/TreeInterfaces.h"
#include "host/components/ContentState.h"
#include "host/data/TextItems.h"
#include "host/folders/FileItem.h"
#include "host/text/Text.h"

#include <unordered_map>

namespace {

bool HasLook(IUnknown* item, ItemLook look) {
    ItemLook found;
    const auto file = Query<IHostFileItem>(item);
    return file && file->GetLook(&found) >= 0 && found == look;
}

} // namespace

int32_t FolderSource::SetFileName(IString* fileName) {
    return Guarded([&] {
        m_Path = ToUtf8(CREFString(fileName));
        RemoveAll();
        Unwatch();
        Forget();
        m_Step.reset();
        m_State = State::kUnread;
        m_IsOutdated = false;
        return S_OK;
    });
}

int32_t FolderSource::Populate() {
    return IsShown() ? S_OK : Guarded([&] {
        Read(0);
        return IsShown() ? S_OK : E_FAIL;
    });
}

int32_t FolderSource::ReadAgain(int32_t newFlags) {
    return Guarded([&] { return Read(newFlags) ? S_OK : S_FALSE; });
}

int32_t FolderSource::IsChanged() {
    const bool isChanged = m_Helpers.m_Watch && m_Helpers.m_Watch->IsChanged(m_WatchNumber);
    return isChanged || (m_Helpers.m_Reads && m_Helpers.m_Reads->IsOver(this)) ? S_OK : S_FALSE;
}

/// Before each reading: another folder may have come in the place of the one that was watched.
void FolderSource::WatchAnew() {
    const int number = m_Helpers.m_Watch ? m_Helpers.m_Watch->Add(m_Path) : -1;
    Unwatch();
    m_WatchNumber = number;
}

FolderSource::~FolderSource() {
    Unwatch();
    Forget();
}

/// What is being looked for is of no use any more.
void FolderSource::Forget() {
    if (m_Helpers.m_Reads) {
        m_Helpers.m_Reads->Forget(this);
    }
}

void FolderSource::Unwatch() {
    if (m_Helpers.m_Watch) {
        m_Helpers.m_Watch->Remove(std::exchange(m_WatchNumber, -1));
    }
}

/// Whether the entries are others now. Until they are all there, nothing is changed.
bool FolderSource::Read(int32_t newFlags) {
    if (!m_Helpers.m_Reads) {
        Prepare();
        return Take(ScanFolder(m_Path, m_Step.get()), newFlags);
    }
    if (auto scan = LookBeside()) {
        return Take(std::move(*scan), newFlags);
    }
    ShowThatItIsRead();
    return false;
}

/// What was found, when that is all. What was looked into before a change is looked into again.
std::optional<FolderScan> FolderSource::LookBeside() {
    const bool isBegun = m_Helpers.m_Reads->IsBegun(this);
    m_IsOutdated |= isBegun && m_Helpers.m_Watch && m_Helpers.m_Watch->IsChanged(m_WatchNumber);
    auto scan = isBegun ? m_Helpers.m_Reads->Take<FolderScan>(this) : BeginToLook();
    return scan && std::exchange(m_IsOutdated, false) ? BeginToLook() : std::move(scan);
}

std::optional<FolderScan> FolderSource::BeginToLook() {
    Prepare();
    auto work = [look = m_Helpers.m_Look, path = m_Path, step = CopyOf(*m_Step)](
                    ReadProgress& progress) { return look(path, &step, &progress); };
    return m_Helpers.m_Reads->Begin<FolderScan>(
        this, m_Path, std::move(work), {.m_AreEntries = true});
}

/// An empty folder would not stay open.
void FolderSource::ShowThatItIsRead() {
    if (m_State == State::kUnread) {
        Replace({MakeReadingRow()});
        m_State = State::kAwaited;
    }
}

void FolderSource::Fill(FolderScan scan) {
    Prepare();
    Take(std::move(scan), 0);
}

void FolderSource::Prepare() {
    if (!m_Step) {
        m_Step = std::make_shared<FolderPath>(
            FolderPath{.m_Above = m_Above ? m_Above : StepsAbove(m_Path)});
    }
    Identify(m_Path, *m_Step);
    WatchAnew();
}

/// What a user has made an end of says nothing of what was not found: shown rows stay then.
bool FolderSource::Take(FolderScan scan, int32_t newFlags) {
    if (scan.m_IsCut && m_State == State::kRead) {
        return false;
    }
    bool isChanged = false;
    auto entries = Merge(std::move(scan.m_Entries), newFlags, isChanged);
    m_Helpers.m_Failures->Drop(m_Path);
    if (scan.m_Error) {
        NoteFailure(scan.m_Error);
    }
    if (isChanged) {
        Replace(std::move(entries));
    }
    const bool isRead = m_State == State::kRead || !scan.m_Error || !IsEmpty();
    m_State = isRead ? State::kRead : State::kUnread;
    return isChanged;
}

/// What was found, with the items that there are already. Flag words stay with the names; what has
/// become a folder, or another one, is closed.
std::vector<FolderSource::Entry> FolderSource::Merge(
    std::vector<FolderEntry> found, int32_t newFlags, bool& isChanged) {
    std::unordered_map<std::string_view, const Entry*> known;
    for (const Entry& entry : Entries()) {
        known.emplace(entry.m_Name ? std::string_view(*entry.m_Name) : "", &entry);
    }
    std::vector<Entry> merged;
    merged.reserve(found.size());
    isChanged = found.size() != Entries().size();
    for (FolderEntry& each : found) {
        const auto place = known.find(each.m_Name);
        const Entry* old = place != known.end() ? place->second : nullptr;
        const bool isKept = old && HasLook(old->m_Item.Get(), each.m_Look);
        isChanged = isChanged || !isKept || old != &Entries()[merged.size()];
        const int32_t flags = old ? old->m_Flags & ~NODE_EXPANDED : newFlags;
        merged.push_back(
            isKept ? *old
                   : Entry{.m_Name = {}, .m_Item = MakeItem(each), .m_Data = {}, .m_Flags = flags});
        merged.back().m_Name = std::move(each.m_Name);
    }
    return merged;
}

SmartPtr<IUnknown> FolderSource::MakeItem(const FolderEntry& found) const {
    if (!found.IsFolder()) {
        return SmartPtr(FileItem::Make(found.m_Look)->Identity());
    }
    const auto folder = Make(m_Path + '/' + found.m_Name, m_Helpers, m_Step, found.m_Look.m_IsLink);
    return SmartPtr(folder->Identity());
}

/// A folder that goes while its rows are shown is no failure: it goes from the one above it too,
/// where there is one.
void FolderSource::NoteFailure(const std::error_code& error) const {
    const bool isGone = IsShown() && m_Above && error == std::errc::no_such_file_or_directory;
    if (!isGone) {
        m_Helpers.m_Failures->Add(m_Path, error.value());
    }
}

int32_t FolderSource::GetContentState(int32_t selector, int32_t* value) {
    return AnswerContentState(IsShown(), selector, value);
}

int32_t FolderSource::GetLook(ItemLook* look) {
    *look = Look();
    return S_OK;
}
