#include "app/validate/Growth.h"

#include <algorithm>
#include <malloc.h>
#include <vector>

/// There in programs under AddressSanitizer and its like only, where mallinfo2 knows nothing.
extern "C" __attribute__((weak)) size_t __sanitizer_get_current_allocated_bytes();

namespace {

constexpr int kHundred = 100;

int64_t MemoryInUse() {
    if (IsSanitized()) {
        return static_cast<int64_t>(__sanitizer_get_current_allocated_bytes());
    }
    const auto info = mallinfo2();
    return static_cast<int64_t>(info.uordblks + info.hblkhd);
}

} // namespace

bool IsSanitized() {
    return __sanitizer_get_current_allocated_bytes != nullptr;
}

int64_t GrowthOfAHundred(int turns, const std::function<void()>& turn) {
    std::vector<int64_t> growths;
    growths.reserve(static_cast<size_t>(turns / kHundred)); // itself no growth
    int64_t before = 0;
    for (int done = 1; done <= turns; ++done) {
        turn();
        if (done % kHundred == 0) {
            const int64_t now = MemoryInUse();
            if (done > kHundred) {
                growths.push_back(now - before);
            }
            before = now;
        }
    }
    const auto median = growths.begin() + std::ssize(growths) / 2;
    std::nth_element(growths.begin(), median, growths.end());
    return *median;
}

bool IsGrowth(int64_t growthOfAHundred) {
    return growthOfAHundred >= kHundred;
}
