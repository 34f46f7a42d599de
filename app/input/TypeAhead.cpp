#include "app/input/TypeAhead.h"

void TypeAhead::Add(std::wstring_view text, int64_t time) {
    if (!IsPending(time)) {
        m_Typed.clear();
    }
    m_Typed += text;
    m_Time = time;
}

bool TypeAhead::IsPending(int64_t time) const {
    return !m_Typed.empty() && time - m_Time < kPause;
}

std::wstring_view TypeAhead::Prefix() const {
    const bool isOneLetter =
        !m_Typed.empty() && m_Typed.find_first_not_of(m_Typed.front()) == std::wstring::npos;
    return std::wstring_view(m_Typed).substr(0, isOneLetter ? 1 : m_Typed.size());
}
