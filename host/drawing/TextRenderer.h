#pragma once

#include "framework/interfaces/DrawingInterfaces.h"
#include "host/components/HostObject.h"

#include <memory>
#include <string>

using PangoLayout = struct _PangoLayout;

/// The component "PMRenderer": draws one line of any Unicode text, centred in the height of its
/// rectangle. A text that is too wide ends in an ellipsis where the rectangle or the clip ends.
class TextRenderer final : public HostObject<TextRenderer, IPMRenderer> {
public:
    static constexpr const char* kKind = "TextRenderer";

    TextRenderer();

    int32_t DrawText(IPMRenderStyle* style, tagREFString text, UbuntuCanvas* canvas,
        CANVASRect* rect, int32_t, int32_t) override;

private:
    struct LayoutDeleter {
        void operator()(PangoLayout* layout) const;
    };

    void SetFontSize(int32_t pixels);

    std::unique_ptr<PangoLayout, LayoutDeleter> m_Layout; ///< used again for every text
    int32_t m_FontSize = 0;                               ///< of the layout, in pixels
};
