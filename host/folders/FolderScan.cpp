#include "host/folders/FolderScan.h"

#include <algorithm>
#include <filesystem>
#include <sys/stat.h>

namespace {

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

} // namespace

// Numbers of large file systems and files do not fit into 32 bits, which are the default of a
// 32-bit machine: stat would fail for them.
static_assert(sizeof(off_t) == 8 && sizeof(ino_t) == 8);

void Identify(const std::string& path, FolderPath& step) {
    struct stat found {};
    const bool isThere = stat(path.c_str(), &found) == 0;
    step.m_Device = isThere ? found.st_dev : 0;
    step.m_Inode = isThere ? found.st_ino : 0;
}

FolderPathPtr StepsAbove(const std::string& path) {
    std::error_code unknown;
    const auto folder = std::filesystem::canonical(path, unknown).parent_path();
    std::filesystem::path reached;
    FolderPathPtr steps;
    for (const auto& name : folder) {
        reached /= name;
        FolderPath step{.m_Above = std::move(steps)};
        Identify(reached.string(), step);
        steps = std::make_shared<FolderPath>(std::move(step));
    }
    return steps;
}

FolderPath CopyOf(const FolderPath& step) {
    FolderPath copy{step.m_Device, step.m_Inode};
    std::shared_ptr<const FolderPath>* place = &copy.m_Above;
    for (const FolderPath* each = step.m_Above.get(); each; each = each->m_Above.get()) {
        const auto above = std::make_shared<FolderPath>(FolderPath{each->m_Device, each->m_Inode});
        *place = above;
        place = &above->m_Above;
    }
    return copy;
}

FolderScan ScanFolder(const std::string& path, const FolderPath* step, ReadProgress* progress) {
    FolderScan scan;
    std::filesystem::directory_iterator place(path, scan.m_Error);
    while (!scan.m_Error && place != std::filesystem::directory_iterator()) {
        scan.m_IsCut = progress && !progress->Advance({scan.m_Entries.size(), 0, true});
        if (scan.m_IsCut) {
            break;
        }
        scan.m_Entries.emplace_back(place->path().filename().string(), LookOf(*place, step));
        place.increment(scan.m_Error);
    }
    std::sort(scan.m_Entries.begin(), scan.m_Entries.end());
    return scan;
}
