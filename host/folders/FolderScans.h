#pragma once

#include "host/folders/FolderScan.h"
#include "host/reading/BackgroundTask.h"
#include "host/reading/Workers.h"

#include <map>
#include <memory>
#include <optional>

/// Looks into folders beside the window's thread, which alone uses it: into a few at once, and into
/// the others after them. Who asks is told apart by an address. Its end does not wait for more than
/// the next entry of each folder.
class FolderScans {
public:
    /// Looks into one folder, on any thread, as ScanFolder does.
    using Look = std::function<FolderScan(
        const std::string& path, const FolderPath* step, ReadProgress* progress)>;

    /// Asking waits for the answers to one thing that the user does, for so long in all; with 0
    /// they always come later. Throws std::system_error.
    explicit FolderScans(std::chrono::nanoseconds patience, Look look = &ScanFolder)
        : m_Look(std::move(look)), m_Patience(patience), m_PatienceLeft(patience) {}
    ~FolderScans();
    FolderScans(const FolderScans&) = delete;
    FolderScans& operator=(const FolderScans&) = delete;

    /// The user does something else: asking waits again.
    void RenewPatience() { m_PatienceLeft = m_Patience; }

    /// Begins to look into a folder, whose own step is `step`, unless that goes on already. Answers
    /// what was found when it is over; that is forgotten then. Throws std::bad_alloc, and
    /// std::system_error where no thread is to be had.
    std::optional<FolderScan> Ask(const void* who, const std::string& path, const FolderPath& step);
    /// Whether something goes on, or was not taken yet.
    bool IsAsked(const void* who) const { return m_Scans.contains(who); }
    /// Whether asking again is answered.
    bool IsOver(const void* who) const;
    void Forget(const void* who);
    /// Whether somebody's asking again is answered.
    bool HasAnswers() const;

    /// Readable when there is something new to tell, until it is asked for.
    int News() const { return m_News.Get(); }
    /// What goes on and how far it is, for users; "" when nothing does.
    std::string TakeNews();
    /// Makes an end of all: what was found until then is the answer.
    void Stop();

private:
    struct Scan {
        std::string m_Path;
        std::shared_ptr<Task<FolderScan>> m_Task;
    };

    BackgroundTask& Begin(const void* who, const std::string& path, const FolderPath& step);
    bool WaitFor(BackgroundTask& task);

    Look m_Look;
    std::chrono::nanoseconds m_Patience;
    std::chrono::nanoseconds m_PatienceLeft;
    Signal m_News;
    std::map<const void*, Scan> m_Scans;
    Workers m_Workers{4}; ///< so that few folders of a slow disk do not keep a quick one waiting
};
using FolderScansPtr = std::shared_ptr<FolderScans>;
