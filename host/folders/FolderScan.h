#pragma once

#include "host/folders/FolderEntry.h"
#include "host/reading/ReadProgress.h"

#include <memory>
#include <string>
#include <sys/types.h>
#include <system_error>
#include <vector>

/// What tells folders apart, however they are reached, and those above on the path that was taken.
/// A folder brings its own up to date each time that it is read.
struct FolderPath {
    dev_t m_Device = 0;
    ino_t m_Inode = 0;
    std::shared_ptr<const FolderPath> m_Above = {};
};
using FolderPathPtr = std::shared_ptr<const FolderPath>;

/// Brings a step up to the folder that is there now. No folder is known by what remains when it
/// cannot be looked at.
void Identify(const std::string& path, FolderPath& step);

/// What was found in a folder.
struct FolderScan {
    std::vector<FolderEntry> m_Entries; ///< in their order
    std::error_code m_Error;            ///< what was read before it stands
};

/// Looks into a folder, whose own step is `step`; a linked folder that leads back to one of its
/// steps is a file. `progress` may be null. Throws std::bad_alloc.
FolderScan ScanFolder(
    const std::string& path, const FolderPath* step, ReadProgress* progress = nullptr);
