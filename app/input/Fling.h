#pragma once

#include <cstdint>
#include <deque>

/// A pan that goes on when the finger goes up, slower and slower. Lengths are in pixels, times in
/// milliseconds, which only grow.
class Fling {
public:
    /// A finger begins a pan, which ends whatever is going on.
    void Begin();
    /// How long the pan is now.
    void Move(double pan, int64_t now);
    /// The finger goes up: what it did last says how fast the pan goes on.
    void GoUp(int64_t now);

    /// Whether the pan goes on by itself.
    bool IsOn(int64_t now) const;
    /// How long the pan is, after the finger has gone up.
    double Pan(int64_t now) const;
    void Stop() { m_Speed = 0; }

private:
    double SpeedAt(int64_t now) const;

    struct Sample {
        double m_Pan;
        int64_t m_Time;
    };

    std::deque<Sample> m_Recent; ///< of the finger
    double m_Speed = 0;          ///< pixels a millisecond when the finger went up
    Sample m_Left{};             ///< where it did so
};
