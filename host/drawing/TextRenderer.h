#pragma once

#include "framework/interfaces/DrawingInterfaces.h"
#include "host/components/HostObject.h"
#include "host/drawing/TextLayouts.h"

/// The component "PMRenderer": draws one line of any Unicode text, centred in the height of its
/// rectangle, in letters that grow with that height. A text that is too wide ends in an ellipsis
/// where the rectangle or the clip ends.
class TextRenderer final : public HostObject<TextRenderer, IPMRenderer> {
public:
    static constexpr const char* kKind = "TextRenderer";

    int32_t DrawText(IPMRenderStyle* style, tagREFString text, UbuntuCanvas* canvas,
        CANVASRect* rect, int32_t, int32_t) override;

private:
    TextLayouts m_Layouts;
};
