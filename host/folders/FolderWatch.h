#pragma once

#include "host/reading/Descriptor.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>

/// Asks the system to tell of changes in folders. Any thread may begin or end to watch one; one
/// thread takes what is told, and another one may wait until there is news. The system limits the
/// number of watches: a folder beyond that is never reported as changed.
class FolderWatch {
public:
    FolderWatch();
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;

    /// Readable while there are changes to take; negative when the system has no watches at all.
    int News() const { return m_Events ? m_Events->Get() : -1; }
    /// Takes the changes that there are, whatever their number. Throws std::bad_alloc.
    void Take();

private:
    friend class WatchedFolder;

    /// What the system tells of one folder, which may be watched several times.
    struct Watch {
        size_t m_Users = 0;
        uint64_t m_Changes = 0;
    };

    using Watches = std::unordered_map<int, Watch>;

    int Add(const std::string& path);
    void Remove(int number);
    Watches::iterator Drop(Watches::iterator watch);
    void DropUnused();
    uint64_t ChangesOf(int number) const;

    std::optional<Descriptor> m_Events; ///< none where the system has no watches
    mutable std::mutex m_Mutex;         ///< for all that follows
    Watches m_Watches;
    uint64_t m_Losses = 0; ///< how often the system lost count: all folders may be changed then
    size_t m_Adding = 0;   ///< threads that are getting a watch, which may be one that is unused
    bool m_HasUnused = false;
};
using FolderWatchPtr = std::shared_ptr<FolderWatch>;

/// Watches a folder from its making to its end.
class WatchedFolder {
public:
    /// Watches nothing.
    WatchedFolder() = default;
    /// From now on nothing that happens in the folder is missed. `watch` may be null. A file system
    /// that does not answer is waited for. Throws std::bad_alloc.
    WatchedFolder(FolderWatchPtr watch, const std::string& path);
    WatchedFolder(WatchedFolder&& other) noexcept { *this = std::move(other); }
    WatchedFolder& operator=(WatchedFolder&& other) noexcept;
    ~WatchedFolder();

    /// Whether something has changed, by what was taken since it is watched.
    bool IsChanged() const { return m_Watch && m_Watch->ChangesOf(m_Number) != m_Before; }

private:
    FolderWatchPtr m_Watch; ///< null when nothing is watched
    int m_Number = -1;
    uint64_t m_Before = 0;
};
