#pragma once

#include "framework/interfaces/DrawingInterfaces.h"
#include "host/components/HostInterfaces.h"
#include "host/components/HostObject.h"
#include "host/drawing/Defaults.h"

/// The component "PMRenderStyle": the colour and size of a text. The other style values are
/// accepted and have no effect on this host's texts.
class RenderStyle final : public HostObject<RenderStyle, IPMRenderStyle, IHostRenderStyle> {
public:
    static constexpr const char* kKind = "RenderStyle";

    int32_t SetStyleValueA(int32_t value) override;
    int32_t SetStyleValueB(int32_t value) override;
    int32_t SetStyleSize(int32_t size) override;
    int32_t SetStyleValuePair(int32_t first, int32_t second) override;
    int32_t SetColor(int32_t rgb) override;
    int32_t SetStyleValue(int32_t value) override;
    int32_t SetStyleValueC(int32_t value) override;

    int32_t GetColor() override { return m_Color; }
    int32_t GetSize() override { return m_Size; }

private:
    int32_t m_Color = 0x000000;
    int32_t m_Size = kDefaultTextSize;
};
