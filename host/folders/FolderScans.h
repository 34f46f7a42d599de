#pragma once

#include "host/folders/FolderScan.h"
#include "host/reading/Background.h"

#include <map>
#include <optional>

/// Looks into folders beside the window's thread, which alone uses it. Who asks is told apart by an
/// address. Its end does not wait for more than the next entry of each folder.
class FolderScans {
public:
    /// Asking waits so long for the answer; with 0 it always comes later. Throws
    /// std::system_error.
    explicit FolderScans(std::chrono::milliseconds patience);
    FolderScans(const FolderScans&) = delete;
    FolderScans& operator=(const FolderScans&) = delete;

    /// Begins to look into a folder, whose own step is `step`, unless that goes on already. Answers
    /// what was found when it is over; that is forgotten then. Throws std::bad_alloc, and
    /// std::system_error where no thread is to be had.
    std::optional<FolderScan> Ask(const void* who, const std::string& path, const FolderPath& step);
    /// Whether something goes on, or was not taken yet.
    bool IsAsked(const void* who) const { return m_Scans.contains(who); }
    /// Whether asking again is answered.
    bool IsOver(const void* who);
    void Forget(const void* who) { m_Scans.erase(who); }
    /// Whether somebody's asking again is answered.
    bool HasAnswers();

    /// Readable when there is something new to tell.
    int News() const { return m_Poll.Get(); }
    /// What goes on and how far it is, for users; "" when nothing does.
    std::string TakeNews();
    /// Makes an end of all: what was found until then is the answer.
    void Stop();

private:
    struct Scan {
        Scan(std::string path, std::function<FolderScan(ReadProgress&)> work)
            : m_Path(std::move(path)), m_Work(std::move(work)) {}

        std::string m_Path;
        Background<FolderScan> m_Work;
    };

    std::chrono::milliseconds m_Patience;
    Descriptor m_Poll; ///< an epoll over the scans' news
    std::map<const void*, Scan> m_Scans;
};
using FolderScansPtr = std::shared_ptr<FolderScans>;
