#include "app/validate/Growth.h"

#include "app/faults/FailingNew.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <numeric>
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

/// None where there are more than addresses: they are an emulator's then, and grow with the code
/// that it translates.
int64_t MappedPages() {
    constexpr int64_t kOfAll32Bits = int64_t{1} << 20;
    int64_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return sizeof(void*) == 4 && pages >= kOfAll32Bits ? 0 : pages;
}

/// No more than that when there is none left to look with.
int64_t OpenFiles() {
    std::error_code error;
    const std::filesystem::directory_iterator files("/proc/self/fd", error);
    return error ? INT32_MAX : std::distance(files, {});
}

/// A measure after each hundred.
class Series {
public:
    Series(int64_t (*measure)(), int turns) : m_Measure(measure) {
        m_Values.reserve(static_cast<size_t>(turns / kHundred)); // itself no growth
    }
    void Take() { m_Values.push_back(m_Measure()); }
    int64_t TotalGrowth() const { return m_Values.back() - m_Values.front(); }
    int64_t MedianGrowth() {
        std::adjacent_difference(m_Values.begin(), m_Values.end(), m_Values.begin());
        const auto first = m_Values.begin() + 1; // before it stands a value itself
        const auto median = first + (m_Values.end() - first) / 2;
        std::nth_element(first, median, m_Values.end());
        return *median;
    }

private:
    int64_t (*m_Measure)();
    std::vector<int64_t> m_Values;
};

} // namespace

bool IsSanitized() {
    return __sanitizer_get_current_allocated_bytes != nullptr;
}

Growth::Growth(int turns, const std::function<void()>& turn) {
    Series blocks(&LiveBlocks, turns);
    Series memory(&MemoryInUse, turns);
    Series mapped(&MappedPages, turns);
    Series files(&OpenFiles, turns);
    for (int done = 1; done <= turns; ++done) {
        turn();
        if (done % kHundred == 0) {
            blocks.Take();
            memory.Take();
            mapped.Take();
            files.Take();
        }
    }
    m_Blocks = blocks.MedianGrowth();
    m_Memory = memory.MedianGrowth();
    m_Mapped = mapped.MedianGrowth();
    m_Files = files.TotalGrowth();
}

std::string Growth::Figure() const {
    return std::to_string(m_Memory) + " bytes more a hundred";
}

void Growth::Judge(Trial& trial, const std::string& what, int64_t bytesOfATurn) const {
    trial.Expect(
        m_Blocks < kHundred && m_Memory < kHundred * bytesOfATurn, "memory grows with " + what);
    // The sanitizers put off giving back.
    trial.Expect(IsSanitized() || m_Mapped < kHundred, "mapped pages grow with " + what);
    trial.Expect(m_Files < kHundred, "open files grow with " + what);
}
