#pragma once

#include <cstdint>
#include <deque>

/// Turns a wheel's or touchpad's deltas into distances that the control scrolls by: whole steps of
/// 100. What is left of a step is kept for the next delta.
class Wheel {
public:
    struct Turn {
        int32_t m_Distance; ///< 0 while no step is complete
        bool m_IsFast;      ///< many steps were turned in the last moments
    };

    /// `steps` may be a fraction and is positive towards later rows. Times only grow.
    Turn Add(double steps, uint32_t milliseconds);

private:
    void Remember(uint32_t milliseconds, double steps);

    struct Delta {
        uint32_t m_Time;
        double m_Steps;
    };

    double m_Rest = 0;
    std::deque<Delta> m_Recent;
};
