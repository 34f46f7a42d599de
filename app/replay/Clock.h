#pragma once

#include <cstdint>

/// Makes time stand still for everything in the process, the loaded modules included, as long as
/// the object lives. One at a time.
///
/// The program defines `gettimeofday` itself and exports it, so that it stands in front of the C
/// library's; while no clock stands it tells the real time.
class StandingClock {
public:
    StandingClock();
    ~StandingClock();
    StandingClock(const StandingClock&) = delete;
    StandingClock& operator=(const StandingClock&) = delete;

    void Advance(int64_t microseconds);
};
