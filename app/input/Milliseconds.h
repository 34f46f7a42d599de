#pragma once

#include <cstdint>
#include <sys/time.h>

/// The time of day, by which everything that waits is timed.
inline int64_t Milliseconds() {
    timeval now{};
    gettimeofday(&now, nullptr);
    return int64_t{now.tv_sec} * 1000 + now.tv_usec / 1000;
}
