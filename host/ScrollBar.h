#pragma once

#include "framework/DrawingInterfaces.h"
#include "framework/InputInterfaces.h"
#include "host/Defaults.h"
#include "host/HostObject.h"

/// The component "UIScrollBar": a vertical bar whose positions are row numbers. Until a range is
/// set, every position from 0 on is allowed.
class ScrollBar final
    : public HostObject<ScrollBar, IUIScrollBar, IRenderableObject, IUIMouseInput> {
public:
    static constexpr const char* kKind = "ScrollBar";

    int32_t GetPos(int32_t* pos) override;
    int32_t SetPos(int32_t pos) override;
    /// A maximum below the minimum counts as the minimum.
    int32_t SetRange(int32_t min, int32_t max) override;
    int32_t Configure(int32_t what, int32_t value) override;
    /// The bar is shown when the range holds more rows than fit the area at the default row height;
    /// it takes a strip at the right then. Null outputs are skipped.
    int32_t Layout(CANVASRect* area, CANVASRect* bar, CANVASRect* client) override;

    int32_t Render(
        UbuntuCanvas* canvas, CANVASRect* rect, IUnknown* context, int32_t param) override;

    /// The bar takes no pointer events: E_FAIL, not handled.
    int32_t Pointer(int32_t state, int32_t action, int32_t keys, double x, double y,
        CANVASRect* rect, IUnknown* context) override;

private:
    int64_t RowCount() const { return int64_t{m_Max} - m_Min + 1; }
    CANVASRect ThumbRect(const CANVASRect& track) const;

    int32_t m_Min = 0;
    int32_t m_Max = INT32_MAX;
    int32_t m_Pos = 0;
    int32_t m_Width = kDefaultScrollBarWidth;
};
