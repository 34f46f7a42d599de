#pragma once

#include "host/data/SuperCollection.h"
#include "host/folders/FolderScan.h"
#include "host/folders/FolderWatch.h"
#include "host/reading/BackgroundReads.h"
#include "host/reading/ReadFailures.h"

#include <functional>

/// What the folders of one tree share.
struct FolderHelpers {
    /// Hears of what cannot be read, on the window's thread; never null.
    ReadFailuresPtr m_Failures = std::make_shared<ReadFailures>();
    FolderWatchPtr m_Watch = {}; ///< watches what was read, unless it is null
    /// Reads beside the window's thread; without it all is read at once. Not held, since a thread
    /// of its own may be the last to hold what it read.
    std::weak_ptr<BackgroundReads> m_Reads = {};
    /// Looks into a folder, on any thread, as ScanFolder does.
    std::function<FolderScan(
        const std::string& path, const FolderPath* step, ReadProgress* progress)>
        m_Look = &ScanFolder;
};
using FolderHelpersPtr = std::shared_ptr<const FolderHelpers>;

/// What one reading of a folder has brought.
struct FolderReading {
    FolderPath m_Step = {};       ///< the folder's own, as it was found
    WatchedFolder m_Watched = {}; ///< since before it was looked into
    FolderScan m_Scan = {};
    std::vector<SuperCollectionBase::Entry> m_Items = {}; ///< made of what was found, for some
};

/// Reads a folder, on any thread: whatever of it asks the file system is in here. `step` has the
/// steps above it, or none for the root of a tree. `progress` may be null. Throws std::bad_alloc.
FolderReading ReadFolder(
    const std::string& path, FolderPath step, const FolderHelpers& helpers, ReadProgress* progress);
