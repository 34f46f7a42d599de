#include "host/reading/ReadProgress.h"

std::string ToText(const ReadState& state) {
    constexpr size_t kEntries = 1000;
    constexpr size_t kMegabyte = 1'000'000;
    constexpr double kPercent = 100;
    if (state.m_AreEntries) {
        return std::to_string(state.m_Done / kEntries * kEntries) + " entries";
    }
    if (state.m_Whole == 0) {
        return std::to_string(state.m_Done / kMegabyte) + " MB";
    }
    const double share = static_cast<double>(state.m_Done) / static_cast<double>(state.m_Whole);
    return std::to_string(static_cast<int>(kPercent * share)) + " %";
}
