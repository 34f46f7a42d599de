#include "host/folders/FolderScans.h"

#include <algorithm>
#include <sys/epoll.h>

namespace {

constexpr std::chrono::milliseconds kNow(0);
constexpr const char* kAction = "wait for folders";

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

FolderScans::FolderScans(std::chrono::milliseconds patience)
    : m_Patience(patience), m_Poll(epoll_create1(EPOLL_CLOEXEC), kAction) {}

std::optional<FolderScan> FolderScans::Ask(
    const void* who, const std::string& path, const FolderPath& step) {
    if (!IsAsked(who)) {
        const auto look = [path, step = CopyOf(step)](ReadProgress& progress) {
            return ScanFolder(path, &step, &progress);
        };
        const auto place = m_Scans.try_emplace(who, path, look).first;
        Background<FolderScan>& work = place->second.m_Work;
        epoll_event wanted{.events = EPOLLIN, .data = {}};
        CheckCall(epoll_ctl(m_Poll.Get(), EPOLL_CTL_ADD, work.News(), &wanted), kAction);
        if (m_Patience == kNow || !work.WaitFor(m_Patience)) {
            return {};
        }
    }
    if (!IsOver(who)) {
        return {};
    }
    const auto scan = m_Scans.extract(who); // also where it throws
    return scan.mapped().m_Work.Take();
}

bool FolderScans::IsOver(const void* who) {
    const auto scan = m_Scans.find(who);
    return scan != m_Scans.end() && scan->second.m_Work.WaitFor(kNow);
}

bool FolderScans::HasAnswers() {
    return std::any_of(m_Scans.begin(), m_Scans.end(),
        [](auto& scan) { return scan.second.m_Work.WaitFor(kNow); });
}

std::string FolderScans::TakeNews() {
    std::string news;
    for (auto& [who, scan] : m_Scans) {
        const std::string text = scan.m_Work.TakeNews();
        news += text.empty() ? "" : (news.empty() ? "" : "; ") + scan.m_Path + ", " + text;
    }
    return news;
}

void FolderScans::Stop() {
    for (auto& [who, scan] : m_Scans) {
        scan.m_Work.Stop();
    }
}
