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

int FolderWatch::Add(const std::string& path) {
    const int number = inotify_add_watch(News(), path.c_str(), kChanges | IN_ONLYDIR);
    if (number >= 0) {
        ++m_Watches[number];
    }
    return number;
}

void FolderWatch::Remove(int number) {
    const auto watch = m_Watches.find(number);
    if (watch != m_Watches.end() && --watch->second == 0) {
        m_Watches.erase(watch);
        inotify_rm_watch(News(), number); // fails where the folder is gone, and it with it
    }
}

void FolderWatch::Take() {
    constexpr size_t kChunk = size_t{1} << 16;
    std::string events(kChunk, '\0');
    m_Changed.clear();
    m_AreAllChanged = false;
    ssize_t size = 0;
    while ((size = read(News(), events.data(), events.size())) > 0) {
        inotify_event event{};
        for (size_t at = 0; at < static_cast<size_t>(size); at += sizeof(event) + event.len) {
            std::memcpy(&event, events.data() + at, sizeof(event));
            m_AreAllChanged |= (event.mask & IN_Q_OVERFLOW) != 0;
            if ((event.mask & IN_IGNORED) == 0) {
                m_Changed.insert(event.wd);
            }
        }
    }
}
