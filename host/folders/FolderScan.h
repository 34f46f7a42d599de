#pragma once

#include "host/folders/FolderEntry.h"
#include "host/reading/ReadProgress.h"

#include <cstdint>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

/// A step of the path to a folder: the numbers that identify the folder, whatever its path is, and
/// the steps above it. A folder sets its own step each time that it is read.
struct FolderPath {
    uint64_t m_Device = 0;
    uint64_t m_Inode = 0;
    std::shared_ptr<const FolderPath> m_Above = {};
};
using FolderPathPtr = std::shared_ptr<const FolderPath>;

/// Sets a step to the folder that is at a path now. When that folder cannot be looked at, the step
/// matches no folder.
void Identify(const std::string& path, FolderPath& step);

/// The steps above a folder that is the root of a tree. Throws std::bad_alloc.
FolderPathPtr StepsAbove(const std::string& path);

/// The steps as they are now, for another thread: folders bring theirs up to date meanwhile.
FolderPath CopyOf(const FolderPath& step);

/// What was found in a folder.
struct FolderScan {
    std::vector<FolderEntry> m_Entries; ///< in their order
    std::error_code m_Error;            ///< ended the reading; the entries before it are valid
    bool m_IsCut = false;               ///< a progress made an end of it
};

/// Looks into a folder, on any thread. `step` is the folder's own one: a linked folder that leads
/// back to one of its steps is a file. `progress` may be null. Throws std::bad_alloc.
FolderScan ScanFolder(
    const std::string& path, const FolderPath* step, ReadProgress* progress = nullptr);
