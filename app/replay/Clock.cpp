#include "app/replay/Clock.h"

#include <ctime>
#include <sys/time.h>

namespace {

constexpr int64_t kMicroseconds = 1'000'000;
constexpr int64_t kStart = 1'700'000'000 * kMicroseconds;
constexpr int64_t kRunning = -1;

int64_t gStandsAt = kRunning; ///< microseconds

int64_t RealTime() {
    timespec time{};
    clock_gettime(CLOCK_REALTIME, &time);
    return int64_t{time.tv_sec} * kMicroseconds + time.tv_nsec / 1000;
}

} // namespace

StandingClock::StandingClock() {
    gStandsAt = kStart;
}

StandingClock::~StandingClock() {
    gStandsAt = kRunning;
}

void StandingClock::Advance(int64_t microseconds) {
    gStandsAt += microseconds;
}

// The C library's own names of the parameters are reserved.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
extern "C" __attribute__((visibility("default"))) int gettimeofday(
    timeval* time, void* /*zone*/) noexcept {
    const int64_t now = gStandsAt == kRunning ? RealTime() : gStandsAt;
    time->tv_sec = static_cast<time_t>(now / kMicroseconds);
    time->tv_usec = static_cast<suseconds_t>(now % kMicroseconds);
    return 0;
}
