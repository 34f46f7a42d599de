#include "host/folders/FolderSource.h"

#include "host/components/ContentState.h"
#include "host/data/TextItems.h"
#include "host/folders/FileItem.h"
#include "host/folders/FolderMerge.h"
#include "host/text/Text.h"

namespace {

/// Makes the items of a folder, on any thread.
struct ItemMaker {
    std::string m_Path;
    FolderHelpersPtr m_Helpers;
    FolderPathPtr m_Step; ///< handed on, and not looked at: it belongs to the window's thread

    SmartPtr<IUnknown> operator()(const FolderEntry& found) const {
        if (!found.IsFolder()) {
            return SmartPtr(FileItem::Make(found.m_Look)->Identity());
        }
        const auto folder = FolderSource::Make(
            m_Path + '/' + found.m_Name, m_Helpers, m_Step, found.m_Look.m_IsLink);
        return SmartPtr(folder->Identity());
    }
};

} // namespace

int32_t FolderSource::SetFileName(IString* fileName) {
    return Guarded([&] {
        m_Path = ToUtf8(CREFString(fileName));
        RemoveAll();
        Forget();
        m_Watched = {};
        m_Step.reset();
        m_State = State::kUnread;
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
    const auto reads = m_HasBegun ? m_Helpers->m_Reads.lock() : nullptr;
    return m_Watched.IsChanged() || (reads && reads->IsOver(this)) ? S_OK : S_FALSE;
}

/// What is being looked for is of no use any more.
void FolderSource::Forget() {
    if (const auto reads = m_HasBegun ? m_Helpers->m_Reads.lock() : nullptr) {
        reads->Forget(this);
    }
}

/// Whether the entries are others now. Until they are all there, nothing is changed. Where a first
/// reading fails the folder can be read again.
bool FolderSource::Read(int32_t newFlags) {
    try {
        const auto reads = m_Helpers->m_Reads.lock();
        return reads ? ReadBeside(*reads, newFlags) : Take(PrepareToRead()(nullptr), newFlags);
    } catch (...) {
        if (m_State == State::kAwaited) {
            RemoveAll();
            m_State = State::kUnread;
        }
        throw;
    }
}

/// Items are made with the reading where none are known.
FolderSource::Work FolderSource::PrepareToRead() {
    if (!m_Step) {
        m_Step = std::make_shared<FolderPath>(FolderPath{.m_Above = m_Above});
    }
    return [step = CopyOf(*m_Step), make = ItemMaker{m_Path, m_Helpers, m_Step},
               isFirst = m_State != State::kRead](ReadProgress* progress) {
        FolderReading reading = ReadFolder(make.m_Path, step, *make.m_Helpers, progress);
        if (isFirst) {
            auto found = std::exchange(reading.m_Scan.m_Entries, {});
            reading.m_Items = MergeFolder({}, std::move(found), 0, make).value_or(FolderItems());
        }
        return reading;
    };
}

/// Takes what was found, if that is all. What was changed meanwhile is read once more; one that
/// never rests is shown as it was each time.
bool FolderSource::ReadBeside(BackgroundReads& reads, int32_t newFlags) {
    bool isChanged = false;
    auto reading = reads.IsBegun(this) ? reads.Take<FolderReading>(this) : BeginToRead(reads);
    while (reading) {
        const bool isLast = reading->m_Scan.m_IsCut || !reading->m_Watched.IsChanged();
        isChanged |= Take(std::move(*reading), newFlags);
        reading = isLast ? std::nullopt : BeginToRead(reads);
    }
    if (m_State == State::kUnread && reads.IsBegun(this)) {
        Replace({MakeReadingRow()}); // an empty folder would not stay open
        m_State = State::kAwaited;
    }
    return isChanged;
}

std::optional<FolderReading> FolderSource::BeginToRead(BackgroundReads& reads) {
    m_HasBegun = true;
    return reads.Begin<FolderReading>(this, m_Path,
        [work = PrepareToRead()](ReadProgress& progress) { return work(&progress); },
        {.m_AreEntries = true});
}

std::error_code FolderSource::ReadNew(ReadProgress* progress) {
    FolderReading reading = PrepareToRead()(progress);
    Fill(std::move(reading.m_Items));
    TakeNumbers(reading);
    NoteState(reading.m_Scan);
    return reading.m_Scan.m_Error;
}

/// The steps above are those that the folders above bring up to date.
void FolderSource::TakeNumbers(FolderReading& reading) {
    m_Step->m_Device = reading.m_Step.m_Device;
    m_Step->m_Inode = reading.m_Step.m_Inode;
    if (!m_Above) {
        m_Step->m_Above = std::move(reading.m_Step.m_Above);
    }
    m_Watched = std::move(reading.m_Watched);
}

/// What a user has made an end of says nothing of what was not found: shown rows stay then. Where
/// memory does not hold what was found, the folder counts as changed still.
bool FolderSource::Take(FolderReading reading, int32_t newFlags) {
    const bool isFirst = m_State != State::kRead;
    if (reading.m_Scan.m_IsCut && !isFirst) {
        TakeNumbers(reading);
        return false;
    }
    auto items = isFirst ? NewItems(std::move(reading.m_Items), newFlags)
                         : MergeFolder(Entries(), std::move(reading.m_Scan.m_Entries), newFlags,
                               ItemMaker{m_Path, m_Helpers, m_Step});
    m_Helpers->m_Failures->Drop(m_Path);
    if (reading.m_Scan.m_Error) {
        NoteFailure(reading.m_Scan.m_Error);
    }
    TakeNumbers(reading);
    if (items) {
        Replace(std::move(*items));
    }
    NoteState(reading.m_Scan);
    return items.has_value();
}

/// Nothing when there was nothing before either.
std::optional<FolderItems> FolderSource::NewItems(FolderItems items, int32_t newFlags) const {
    for (Entry& item : items) {
        item.m_Flags = newFlags;
    }
    return items.empty() && IsEmpty() ? std::nullopt : std::optional(std::move(items));
}

/// One of which nothing could be read is read when it is asked for again.
void FolderSource::NoteState(const FolderScan& scan) {
    const bool isRead = m_State == State::kRead || !scan.m_Error || !IsEmpty();
    m_State = isRead ? State::kRead : State::kUnread;
}

/// A folder that goes while its rows are shown is no failure: it goes from the one above it too,
/// where there is one.
void FolderSource::NoteFailure(const std::error_code& error) const {
    const bool isGone = IsShown() && m_Above && error == std::errc::no_such_file_or_directory;
    if (!isGone) {
        m_Helpers->m_Failures->Add(m_Path, error.value());
    }
}

int32_t FolderSource::GetContentState(int32_t selector, int32_t* value) {
    return AnswerContentState(IsShown(), selector, value);
}

int32_t FolderSource::GetLook(ItemLook* look) {
    *look = Look();
    return S_OK;
}
