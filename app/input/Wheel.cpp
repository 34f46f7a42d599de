#include "app/input/Wheel.h"

#include <cmath>

namespace {

constexpr int32_t kStep = 100;
constexpr double kMostSteps = 1000;     // of one delta
constexpr uint32_t kMoment = 150;       // milliseconds
constexpr double kFastSteps = 8;        // in a moment
constexpr double kCloseToStep = 1.0e-6; // thirds of a step add up to it

} // namespace

Wheel::Turn Wheel::Add(double steps, uint32_t milliseconds) {
    if (!(std::abs(steps) <= kMostSteps)) {
        return {0, false};
    }
    const bool turnsBack = steps * m_Rest < 0;
    m_Rest = turnsBack ? steps : m_Rest + steps;
    const double whole = std::trunc(m_Rest + std::copysign(kCloseToStep, m_Rest));
    m_Rest -= whole;

    double recent = 0;
    Remember(milliseconds, steps);
    for (const Delta& delta : m_Recent) {
        recent += delta.m_Steps;
    }
    return {static_cast<int32_t>(whole) * kStep, std::abs(recent) >= kFastSteps};
}

void Wheel::Remember(uint32_t milliseconds, double steps) {
    while (!m_Recent.empty() && milliseconds - m_Recent.front().m_Time > kMoment) {
        m_Recent.pop_front();
    }
    m_Recent.push_back({milliseconds, steps});
}
