#include "host/drawing/NotedTexts.h"

#include <new>

namespace {

constexpr cairo_user_data_key_t kKey{};

} // namespace

NotedTexts::NotedTexts(cairo_t* context, int32_t color) : m_Context(context), m_Color(color) {
    if (cairo_set_user_data(context, &kKey, this, nullptr) != CAIRO_STATUS_SUCCESS) {
        throw std::bad_alloc();
    }
}

NotedTexts::~NotedTexts() {
    cairo_set_user_data(m_Context, &kKey, nullptr, nullptr);
}

void NotedTexts::Note(cairo_t* context, const CANVASRect& rect, int32_t color) {
    auto* notes = static_cast<NotedTexts*>(cairo_get_user_data(context, &kKey));
    if (notes && notes->m_Color == color) {
        notes->m_Rects.push_back(rect);
    }
}
