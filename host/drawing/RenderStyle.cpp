#include "host/drawing/RenderStyle.h"

#include <algorithm>

namespace {

constexpr int32_t kMaxTextSize = 1000; // pixels

} // namespace

int32_t RenderStyle::SetStyleValueA(int32_t /*value*/) {
    return S_OK;
}

int32_t RenderStyle::SetStyleValueB(int32_t /*value*/) {
    return S_OK;
}

int32_t RenderStyle::SetStyleSize(int32_t size) {
    m_Size = std::clamp(size, 1, kMaxTextSize);
    return S_OK;
}

int32_t RenderStyle::SetStyleValuePair(int32_t /*first*/, int32_t /*second*/) {
    return S_OK;
}

int32_t RenderStyle::SetColor(int32_t rgb) {
    m_Color = rgb;
    return S_OK;
}

int32_t RenderStyle::SetStyleValue(int32_t /*value*/) {
    return S_OK;
}

int32_t RenderStyle::SetStyleValueC(int32_t /*value*/) {
    return S_OK;
}
