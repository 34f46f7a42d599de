#include "host/folders/FolderWatch.h"

#include <cstring>
#include <sys/inotify.h>

namespace {

/// What shows in a folder: names, and whether files may be run. What is in files does not.
constexpr uint32_t kChanges =
    IN_CREATE | IN_DELETE | IN_MOVE | IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF;

} // namespace

FolderWatch::FolderWatch() {
    const int number = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (number >= 0) {
        m_Events.emplace(number, "watch folders");
    }
}

/// A negative number when the folder cannot be watched. The lock is not held while the system looks
/// for it. Without memory the system's watch stays, and what it tells is of no use to anybody.
int FolderWatch::Add(const std::string& path) {
    {
        const std::lock_guard lock(m_Mutex);
        ++m_Adding;
    }
    const int number = inotify_add_watch(News(), path.c_str(), kChanges | IN_ONLYDIR);
    const std::lock_guard lock(m_Mutex);
    --m_Adding;
    if (number >= 0) {
        ++m_Watches[number].m_Users;
    }
    DropUnused();
    return number;
}

void FolderWatch::DropUnused() {
    if (m_Adding > 0 || !std::exchange(m_HasUnused, false)) {
        return;
    }
    for (auto each = m_Watches.begin(); each != m_Watches.end();) {
        each = each->second.m_Users == 0 ? Drop(each) : std::next(each);
    }
}

/// What another thread may be getting is kept until it has it.
void FolderWatch::Remove(int number) {
    const std::lock_guard lock(m_Mutex);
    const auto watch = m_Watches.find(number);
    if (watch == m_Watches.end() || --watch->second.m_Users > 0) {
        return;
    }
    if (m_Adding > 0) {
        m_HasUnused = true;
    } else {
        Drop(watch);
    }
}

/// The system does not know it any more where the folder is gone.
FolderWatch::Watches::iterator FolderWatch::Drop(Watches::iterator watch) {
    inotify_rm_watch(News(), watch->first);
    return m_Watches.erase(watch);
}

uint64_t FolderWatch::ChangesOf(int number) const {
    const std::lock_guard lock(m_Mutex);
    const auto watch = m_Watches.find(number);
    return m_Losses + (watch != m_Watches.end() ? watch->second.m_Changes : 0);
}

void FolderWatch::Take() {
    constexpr size_t kChunk = size_t{1} << 16;
    std::string events(kChunk, '\0');
    const std::lock_guard lock(m_Mutex);
    ssize_t size = 0;
    while ((size = read(News(), events.data(), events.size())) > 0) {
        inotify_event event{};
        for (size_t at = 0; at < static_cast<size_t>(size); at += sizeof(event) + event.len) {
            std::memcpy(&event, events.data() + at, sizeof(event));
            const auto watch = m_Watches.find(event.wd);
            m_Losses += (event.mask & IN_Q_OVERFLOW) != 0 ? 1 : 0;
            if (watch != m_Watches.end() && (event.mask & IN_IGNORED) == 0) {
                ++watch->second.m_Changes;
            }
        }
    }
}

WatchedFolder::WatchedFolder(FolderWatchPtr watch, const std::string& path)
    : m_Watch(std::move(watch)), m_Number(m_Watch ? m_Watch->Add(path) : -1),
      m_Before(m_Watch ? m_Watch->ChangesOf(m_Number) : 0) {}

WatchedFolder& WatchedFolder::operator=(WatchedFolder&& other) noexcept {
    std::swap(m_Watch, other.m_Watch);
    std::swap(m_Number, other.m_Number);
    std::swap(m_Before, other.m_Before);
    return *this;
}

WatchedFolder::~WatchedFolder() {
    if (m_Watch) {
        m_Watch->Remove(m_Number);
    }
}
