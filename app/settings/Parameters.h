#pragma once

#include <cstdint>

/// The control's parameter for whether binding a collection brings the default sizes.
constexpr int32_t PARAMETER_USEDEFAULTSTYLE = 105;
/// The control's parameter for the first row shown.
constexpr int32_t PARAMETER_SCROLLPOS = 115;

// Colours. The control draws with the first; what to do with the others is the host's own.
constexpr int32_t PARAMETER_TEXTCOLOR = 100;
constexpr int32_t PARAMETER_PAPERCOLOR = 101;
constexpr int32_t PARAMETER_BANDCOLOR = 102;
