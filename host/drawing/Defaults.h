#pragma once

#include <cstdint>

// The host's default sizes, in pixels.

constexpr int32_t kDefaultRowHeight = 22;
constexpr int32_t kDefaultTextSize = 13;
constexpr int32_t kDefaultScrollBarWidth = 16;
