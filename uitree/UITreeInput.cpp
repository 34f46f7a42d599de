#include "uitree/Geometry.h"
#include "uitree/UITreeImpl.h"

// Hit testing and touch.

int32_t CUITree::HitTest(int32_t x, int32_t y, CANVASRect* rect, IUnknown** node) {
    if (!node) {
        return E_POINTER;
    }
    return Perform([&] {
        const CANVASRect area = RectOf(rect);
        View view;
        if (!Contains(area, x, y) || !TakeView(view)) {
            return E_FAIL;
        }
        LayOut(area, view.m_Rows);
        NodeAddress hit;
        auto found = NodeAt(view, Saturate(int64_t{y} - area.top), hit);
        if (!found) {
            return E_FAIL;
        }
        *node = found.Detach();
        return S_OK;
    });
}

int32_t CUITree::Touch(double /*x*/, double /*y*/, CANVASRect* /*rect*/, double phase, double,
    double, double, double, double, double panY, double, double) {
    return Perform([&] {
        const int32_t position = ScrollPos();
        if (phase == 0.0) {
            m_TouchStartPos = position;
        }
        if (phase < 0.0 || !HasRowHeight()) {
            return S_OK;
        }
        Scroll(Truncate(m_TouchStartPos - panY / m_ElementHeight));
        Refresh(0);
        return S_OK;
    });
}
