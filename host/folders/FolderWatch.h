#pragma once

#include "host/reading/Descriptor.h"

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>

/// Asks the system to tell of changes in folders. One thread uses it; another one may wait until
/// there is news. The system limits the number of watches: a folder beyond that is never reported
/// as changed.
class FolderWatch {
public:
    FolderWatch();
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;

    /// Watches a folder: from the return on, nothing that happens in it is missed. A folder may be
    /// watched several times, by the same number. Negative when it cannot be. Throws
    /// std::bad_alloc.
    int Add(const std::string& path);
    /// Ends one watch of a folder; does nothing for a negative number.
    void Remove(int number);

    /// Readable while there are changes to take; negative when the system has no watches at all.
    int News() const { return m_Events ? m_Events->Get() : -1; }
    /// Takes the changes that there are, whatever their number. Throws std::bad_alloc.
    void Take();
    /// Whether a folder was changed, by what was taken last. So were all when the system lost
    /// count.
    bool IsChanged(int number) const { return m_AreAllChanged || m_Changed.contains(number); }

private:
    std::optional<Descriptor> m_Events;     ///< none where the system has no watches
    std::unordered_map<int, int> m_Watches; ///< how often each is wanted
    std::set<int> m_Changed;
    bool m_AreAllChanged = false;
};
using FolderWatchPtr = std::shared_ptr<FolderWatch>;
