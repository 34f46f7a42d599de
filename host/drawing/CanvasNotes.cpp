#include "host/drawing/CanvasNotes.h"

#include <new>

namespace {

constexpr cairo_user_data_key_t kKey{};

} // namespace

CanvasNotes::CanvasNotes(cairo_t* context, Noted& noted, const BarPaint& bar)
    : m_Context(context), m_Noted(noted), m_Bar(bar) {
    if (cairo_set_user_data(context, &kKey, this, nullptr) != CAIRO_STATUS_SUCCESS) {
        throw std::bad_alloc();
    }
}

CanvasNotes::~CanvasNotes() {
    cairo_set_user_data(m_Context, &kKey, nullptr, nullptr);
}

CanvasNotes* CanvasNotes::On(cairo_t* context) {
    return static_cast<CanvasNotes*>(cairo_get_user_data(context, &kKey));
}

void CanvasNotes::NoteText(cairo_t* context, const CANVASRect& rect, int32_t color,
    int32_t textSize, std::wstring_view cut) {
    if (CanvasNotes* notes = On(context)) {
        notes->m_Noted.m_Texts.push_back({rect, color, textSize, std::wstring(cut)});
    }
}

BarPaint CanvasNotes::NoteBar(cairo_t* context, const CANVASRect& track, const CANVASRect& thumb) {
    CanvasNotes* notes = On(context);
    if (!notes) {
        return {};
    }
    notes->m_Noted.m_Track = track;
    notes->m_Noted.m_Thumb = thumb;
    return notes->m_Bar;
}
