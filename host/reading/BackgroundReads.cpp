#include "host/reading/BackgroundReads.h"

#include <algorithm>

BackgroundReads::~BackgroundReads() {
    for (auto& [who, reading] : m_Reads) {
        reading.m_Task->Leave();
    }
}

void BackgroundReads::Start(const void* who, Reading reading) {
    m_Workers.Do(reading.m_Task);
    m_Reads.emplace(who, std::move(reading));
}

/// Whether it is over within what is left of the patience.
bool BackgroundReads::WaitFor(BackgroundTask& task) {
    using std::chrono::steady_clock;
    if (m_PatienceLeft <= std::chrono::nanoseconds::zero()) {
        return false;
    }
    const auto begin = steady_clock::now();
    const bool isOver = task.WaitFor(m_PatienceLeft);
    m_PatienceLeft -= steady_clock::now() - begin;
    return isOver;
}

bool BackgroundReads::IsOver(const void* who) const {
    const auto reading = m_Reads.find(who);
    return reading != m_Reads.end() && reading->second.m_Task->IsOver();
}

void BackgroundReads::Forget(const void* who) {
    const auto reading = m_Reads.find(who);
    if (reading != m_Reads.end()) {
        reading->second.m_Task->Leave();
        m_Reads.erase(reading);
    }
}

bool BackgroundReads::HasAnswers() const {
    return std::any_of(m_Reads.begin(), m_Reads.end(),
        [](const auto& reading) { return reading.second.m_Task->IsOver(); });
}

/// Few are named: there may be as many as rows.
std::string BackgroundReads::TakeNews() {
    constexpr size_t kMost = 3;
    m_News.Clear();
    std::string news;
    size_t named = 0;
    for (const auto& [who, reading] : m_Reads) {
        const std::string text = reading.m_Task->HowFar();
        if (!text.empty() && named++ < kMost) {
            news += (news.empty() ? "" : "; ") + reading.m_Name + ", " + text;
        }
    }
    return news + (named > kMost ? " and " + std::to_string(named - kMost) + " more" : "");
}

void BackgroundReads::Stop() {
    for (auto& [who, reading] : m_Reads) {
        reading.m_Task->Stop();
    }
}
