#include "app/input/Fling.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int64_t kLooksBack = 100; // milliseconds
constexpr double kDecay = 325;      // milliseconds, in which the speed falls to 1/e
// Pixels a millisecond.
constexpr double kSlowestStart = 0.25;
constexpr double kFastestStart = 8;
constexpr double kRest = 0.03;

} // namespace

void Fling::Begin() {
    m_Recent.clear();
    Stop();
}

void Fling::Move(double pan, int64_t now) {
    while (!m_Recent.empty() && now - m_Recent.front().m_Time > kLooksBack) {
        m_Recent.pop_front();
    }
    m_Recent.push_back({pan, now});
}

void Fling::GoUp(int64_t now) {
    if (m_Recent.empty()) {
        return;
    }
    m_Left = {m_Recent.back().m_Pan, now};
    Move(m_Left.m_Pan, now);
    const double way = m_Left.m_Pan - m_Recent.front().m_Pan;
    const auto time = static_cast<double>(std::max<int64_t>(now - m_Recent.front().m_Time, 1));
    const double speed = way / time;
    m_Speed =
        std::abs(speed) < kSlowestStart ? 0 : std::clamp(speed, -kFastestStart, kFastestStart);
}

double Fling::SpeedAt(int64_t now) const {
    return m_Speed * std::exp(-static_cast<double>(now - m_Left.m_Time) / kDecay);
}

bool Fling::IsOn(int64_t now) const {
    return std::abs(SpeedAt(now)) > kRest;
}

double Fling::Pan(int64_t now) const {
    return m_Left.m_Pan + (m_Speed - SpeedAt(now)) * kDecay;
}
