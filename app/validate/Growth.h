#pragma once

#include <cstdint>
#include <functional>

/// The bytes of memory that `turn` keeps for good: what a hundred turns add to the memory in use by
/// the whole process, as the median over all hundreds but the first. An allocator that keeps a
/// block for later, as it now and then does, shows in one hundred only; a leak shows in each.
int64_t GrowthOfAHundred(int turns, const std::function<void()>& turn);

/// Whether that many bytes are at least one for each turn.
bool IsGrowth(int64_t growthOfAHundred);

/// Whether the process runs under AddressSanitizer or its like, which keeps some memory of its own
/// for each library that is loaded.
bool IsSanitized();
