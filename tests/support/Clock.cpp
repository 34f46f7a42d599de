#include "tests/support/Clock.h"

#include <sys/time.h>

namespace {

constexpr int64_t kMicroseconds = 1'000'000;
int64_t gNow = 1'700'000'000 * kMicroseconds;

} // namespace

void AdvanceClock(int64_t microseconds) {
    gNow += microseconds;
}

extern "C" __attribute__((visibility("default"))) int gettimeofday(
    timeval* time, void* /*zone*/) noexcept {
    time->tv_sec = static_cast<time_t>(gNow / kMicroseconds);
    time->tv_usec = static_cast<suseconds_t>(gNow % kMicroseconds);
    return 0;
}
