#include "app/window/ReadingNews.h"

ReadingNews::ReadingNews(BackgroundReading* reading)
    : m_Reading(reading), m_HasNews(reading != nullptr) {
    if (m_Reading) {
        m_Waker.emplace(m_Reading->News());
    }
}

void ReadingNews::Hear(const SDL_Event& event) {
    m_HasNews |= m_Waker && m_Waker->IsFrom(event);
}

std::optional<SourceMaker> ReadingNews::Take() {
    if (!std::exchange(m_HasNews, false)) {
        return {};
    }
    m_HowFar = m_Reading->TakeNews();
    if (!m_HowFar.empty()) {
        m_Waker->Arm();
        return {};
    }
    m_WasStopped = m_Reading->WasStopped();
    m_Waker.reset();
    return std::exchange(m_Reading, nullptr)->Take();
}
