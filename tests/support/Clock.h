#pragma once

#include <cstdint>

/// The clock of the test program. It stands in front of the C library's for everything that is
/// loaded, the module included, and moves only when told to.
void AdvanceClock(int64_t microseconds);
