#include "host/data/FolderSource.h"

#include "host/data/FileItem.h"
#include "host/data/FolderEntry.h"
#include "host/text/Text.h"

#include <algorithm>
#include <filesystem>
#include <sys/stat.h>

namespace {

FolderPathPtr StepInto(const std::string& path, FolderPathPtr above) {
    struct stat found {};
    return stat(path.c_str(), &found) != 0 ? nullptr
                                           : std::make_shared<const FolderPath>(FolderPath{
                                                 found.st_dev, found.st_ino, std::move(above)});
}

bool LeadsBack(const std::string& path, const FolderPath* step) {
    struct stat found {};
    const bool isThere = stat(path.c_str(), &found) == 0;
    while (isThere && step && !(found.st_dev == step->m_Device && found.st_ino == step->m_Inode)) {
        step = step->m_Above.get();
    }
    return isThere && step;
}

/// Whether an entry is shown as a folder; what cannot be looked at is shown as a file.
bool IsFolder(const std::filesystem::directory_entry& entry, const FolderPath* step) {
    std::error_code unknown;
    if (!entry.is_directory(unknown)) {
        return false;
    }
    return !entry.is_symlink(unknown) || !LeadsBack(entry.path().string(), step);
}

bool IsProgram(const std::filesystem::directory_entry& entry) {
    using std::filesystem::perms;
    std::error_code unknown;
    return entry.is_regular_file(unknown) &&
           (entry.status(unknown).permissions() & perms::owner_exec) != perms::none;
}

ItemLook LookOf(const std::filesystem::directory_entry& entry, const FolderPath* step) {
    std::error_code unknown;
    return {IsFolder(entry, step) ? ItemKind::kFolder
                                  : KindOfFile(entry.path().filename().string(), IsProgram(entry)),
        entry.is_symlink(unknown)};
}

/// The folder's entries in their order; what was read before an error stands.
std::vector<FolderEntry> ReadFolder(
    const std::string& path, const FolderPath* step, std::error_code& error) {
    std::vector<FolderEntry> entries;
    std::filesystem::directory_iterator place(path, error);
    for (; !error && place != std::filesystem::directory_iterator(); place.increment(error)) {
        entries.emplace_back(place->path().filename().string(), LookOf(*place, step));
    }
    std::sort(entries.begin(), entries.end());
    return entries;
}

} // namespace

int32_t FolderSource::SetFileName(IString* fileName) {
    return Guarded([&] {
        m_Path = ToUtf8(CREFString(fileName));
        RemoveAll();
        m_Filled = false;
        return S_OK;
    });
}

int32_t FolderSource::Populate() {
    return m_Filled ? S_OK : Guarded([&] {
        RemoveAll(); // what an attempt that ran out of memory left
        const bool isWhole = ReadEntries();
        m_Filled = isWhole || !IsEmpty();
        return m_Filled ? S_OK : E_FAIL;
    });
}

/// False when the folder cannot be read to its end.
bool FolderSource::ReadEntries() {
    const auto step = StepInto(m_Path, m_Above);
    std::error_code error;
    for (FolderEntry& entry : ReadFolder(m_Path, step.get(), error)) {
        if (entry.IsFolder()) {
            const auto folder =
                Make(m_Path + '/' + entry.m_Name, m_Failures, step, entry.m_Look.m_IsLink);
            Append(std::move(entry.m_Name), folder->Identity());
        } else {
            Append(std::move(entry.m_Name), FileItem::Make(entry.m_Look).Get());
        }
    }
    if (error && m_Failures) {
        m_Failures->Add(m_Path, error.value());
    }
    return !error;
}

int32_t FolderSource::GetContentState(int32_t selector, int32_t* value) {
    if (!value) {
        return E_POINTER;
    }
    *value = selector == CONTENTSTATE_ARCHIVE && m_Filled ? 1 : 0;
    return selector == CONTENTSTATE_ARCHIVE ? S_OK : E_INVALIDARG;
}

int32_t FolderSource::Render(
    UbuntuCanvas* canvas, CANVASRect* rect, IUnknown* /*context*/, int32_t /*param*/) {
    DrawItemPicture(canvas, rect, {ItemKind::kFolder, m_IsLink});
    return S_OK;
}
