#include "host/folders/FolderScans.h"

#include <algorithm>

namespace {

/// The steps as they are now: the window's thread brings its own up to date meanwhile.
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

} // namespace

FolderScans::~FolderScans() {
    for (auto& [who, scan] : m_Scans) {
        scan.m_Task->Leave();
    }
}

std::optional<FolderScan> FolderScans::Ask(
    const void* who, const std::string& path, const FolderPath& step) {
    const bool isThere = IsAsked(who) ? IsOver(who) : WaitFor(Begin(who, path, step));
    if (!isThere) {
        return {};
    }
    const auto scan = m_Scans.extract(who); // also where it throws
    return scan.mapped().m_Task->Take();
}

BackgroundTask& FolderScans::Begin(
    const void* who, const std::string& path, const FolderPath& step) {
    const auto work = [this, path, step = CopyOf(step)](
                          ReadProgress& progress) { return m_Look(path, &step, &progress); };
    const ReadState begin{.m_AreEntries = true};
    const auto task = std::make_shared<Task<FolderScan>>(work, m_News, nullptr, begin);
    m_Workers.Do(task);
    m_Scans.emplace(who, Scan{path, task});
    return *task;
}

/// Whether it is over within what is left of the patience.
bool FolderScans::WaitFor(BackgroundTask& task) {
    using std::chrono::steady_clock;
    if (m_PatienceLeft <= std::chrono::nanoseconds::zero()) {
        return false;
    }
    const auto begin = steady_clock::now();
    const bool isOver = task.WaitFor(m_PatienceLeft);
    m_PatienceLeft -= steady_clock::now() - begin;
    return isOver;
}

bool FolderScans::IsOver(const void* who) const {
    const auto scan = m_Scans.find(who);
    return scan != m_Scans.end() && scan->second.m_Task->IsOver();
}

void FolderScans::Forget(const void* who) {
    const auto scan = m_Scans.find(who);
    if (scan != m_Scans.end()) {
        scan->second.m_Task->Leave();
        m_Scans.erase(scan);
    }
}

bool FolderScans::HasAnswers() const {
    return std::any_of(m_Scans.begin(), m_Scans.end(),
        [](const auto& scan) { return scan.second.m_Task->IsOver(); });
}

std::string FolderScans::TakeNews() {
    m_News.Clear();
    std::string news;
    for (const auto& [who, scan] : m_Scans) {
        const std::string text = scan.m_Task->HowFar();
        news += text.empty() ? "" : (news.empty() ? "" : "; ") + scan.m_Path + ", " + text;
    }
    return news;
}

void FolderScans::Stop() {
    for (auto& [who, scan] : m_Scans) {
        scan.m_Task->Stop();
    }
}
