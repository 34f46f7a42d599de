#pragma once

#include <cstdint>

/// The control's parameter for the first row shown.
constexpr int32_t PARAMETER_SCROLLPOS = 115;
