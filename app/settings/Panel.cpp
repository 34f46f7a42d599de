#include "app/settings/Panel.h"

#include "framework/settings/ParameterTable.h"
#include "host/settings/ParameterText.h"
#include "host/text/Text.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int32_t kWidth = 300; // pixels

bool IsAction(const Setting& setting) {
    return TypeOf(setting.m_Parameter.m_Flags) == PROPTYPE_ACTION;
}

bool IsControl(wchar_t character) {
    constexpr wchar_t kDelete = 0x7F;
    return character < L' ' || character == kDelete;
}

} // namespace

int32_t Panel::WidthIn(int32_t windowWidth) {
    return std::min(kWidth, windowWidth / 2);
}

void Panel::Press(PanelKey key) {
    switch (key) {
    case PanelKey::kUp:
        return Choose(m_Chosen - 1);
    case PanelKey::kDown:
        return Choose(m_Chosen + 1);
    case PanelKey::kHome:
        return Choose(0);
    case PanelKey::kEnd:
        return Choose(m_Page.Count() - 1);
    case PanelKey::kBackspace:
        return Erase();
    case PanelKey::kEnter:
        return Apply();
    case PanelKey::kKeep:
        m_IsClosed = true;
        return;
    case PanelKey::kCancel:
        return Cancel();
    }
}

void Panel::Type(std::string_view utf8) {
    std::wstring text = ToWide(utf8);
    std::erase_if(text, IsControl);
    if (CanBeTyped() && !text.empty()) {
        m_Typed = m_Typed.value_or(L"") + text;
        m_IsRejected = false;
    }
}

void Panel::Click(double y) {
    const double line = std::floor(y / kLineHeight) - 1;
    if (line >= 0 && line < LinesShown()) {
        Choose(m_First + static_cast<int32_t>(line));
    }
}

void Panel::Resize(int32_t height) {
    m_Height = height;
    m_First = std::clamp(m_First, std::max(m_Chosen - LinesShown() + 1, 0), m_Chosen);
}

std::vector<Panel::Line> Panel::Lines() const {
    std::vector<Line> lines;
    const int32_t end = std::min(m_First + LinesShown(), m_Page.Count());
    for (int32_t i = m_First; i < end; ++i) {
        const Setting setting = m_Page.At(i);
        const bool isChosen = i == m_Chosen;
        const bool isEdited = isChosen && m_Typed;
        lines.push_back({setting.m_Name, isEdited ? ToUtf8(Refer(*m_Typed)) : setting.m_Value,
            (i - m_First + 1) * kLineHeight, isChosen, isEdited, isEdited && m_IsRejected});
    }
    return lines;
}

std::string Panel::Hint() const {
    return m_IsRejected ? "takes " + m_Page.HintAt(m_Chosen) : "F2 keeps, escape takes back";
}

void Panel::Choose(int32_t index) {
    const int32_t chosen = std::clamp(index, 0, std::max(m_Page.Count() - 1, 0));
    if (chosen != m_Chosen) {
        m_Chosen = chosen;
        m_Typed.reset();
    }
    Resize(m_Height);
}

void Panel::Erase() {
    if (!CanBeTyped()) {
        return;
    }
    if (!m_Typed) {
        m_Typed = ToWide(m_Page.At(m_Chosen).m_Value);
    }
    if (!m_Typed->empty()) {
        m_Typed->pop_back();
    }
    m_IsRejected = false;
}

void Panel::Apply() {
    const Setting setting = m_Page.At(m_Chosen);
    if (!m_Typed && !IsAction(setting)) {
        return;
    }
    const std::string text = IsAction(setting) ? "0" : ToUtf8(Refer(*m_Typed));
    m_IsRejected = !m_Page.Edit(m_Chosen, text);
    if (m_IsRejected) {
        return;
    }
    const int32_t status = m_Page.Apply();
    m_Record("set " + std::to_string(setting.m_Parameter.m_Number) + ' ' + text, status);
    m_IsRejected = status < 0;
    if (!m_IsRejected) {
        m_Typed.reset();
    }
}

void Panel::Cancel() {
    m_Record("cancel", m_Page.Cancel());
    m_IsClosed = true;
}

/// Objects and actions have no text of their own.
bool Panel::CanBeTyped() const {
    const uint32_t type = TypeOf(m_Page.At(m_Chosen).m_Parameter.m_Flags);
    return type < PROPTYPE_OBJECT;
}

int32_t Panel::LinesShown() const {
    return std::max(m_Height / kLineHeight - 1, 1);
}
