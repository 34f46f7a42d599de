#pragma once

#include "framework/interfaces/DrawingInterfaces.h"
#include "framework/interfaces/InputInterfaces.h"
#include "host/components/HostObject.h"
#include "host/drawing/Defaults.h"

/// The component "UIScrollBar": a vertical bar whose positions are row numbers. Until a range is
/// set, every position from 0 on is allowed.
///
/// It draws itself slim until the pointer is near; its strip is as wide as ever. The canvas says
/// where the pointer is (CanvasNotes), since that may have left without a word to the bar.
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

    /// `rect` is the bar's strip as laid out; a hidden bar's is empty. A primary press is the bar's
    /// when it lands on the strip: on the thumb it starts a drag, in the track it pages. From then
    /// on the moves and the release with that button are the bar's too, wherever they are. E_FAIL
    /// for what it does not handle, S_OK when the position changed, S_FALSE when it did not.
    int32_t Pointer(int32_t state, int32_t action, int32_t keys, double x, double y,
        CANVASRect* rect, IUnknown* context) override;

private:
    /// What the bar does with the moves that follow a press on it.
    enum class Hold { kNone, kTrack, kThumb };

    int32_t Press(double y, const CANVASRect& track);
    int32_t Drag(double y, const CANVASRect& track);
    /// Sets the position, limited to the range. NaN changes nothing.
    int32_t MoveTo(double pos);
    int64_t RowCount() const { return int64_t{m_Max} - m_Min + 1; }
    /// The rows that a height shows at the default row height.
    static int64_t RowsIn(int32_t height) { return height / kDefaultRowHeight; }
    /// As wide as the track. The thumb shows which part of the rows is in view: its height is their
    /// share of the track, and it reaches the track's end at the last position.
    CANVASRect ThumbRect(const CANVASRect& track) const;

    int32_t m_Min = 0;
    int32_t m_Max = INT32_MAX;
    int32_t m_Pos = 0;
    int32_t m_Width = kDefaultScrollBarWidth;
    Hold m_Hold = Hold::kNone;
    double m_GrabY = 0;    ///< where the thumb was pressed
    int32_t m_GrabPos = 0; ///< the position then
};
