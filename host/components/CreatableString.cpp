#include "host/components/CreatableString.h"

#include "host/text/Text.h"

namespace {

bool IsValid(tagREFString text) {
    return text.m_Length == 0 || (text.m_Length > 0 && text.m_String);
}

} // namespace

int32_t CreatableString::GetString(wchar_t** text, int32_t* length) {
    if (text) {
        *text = m_Text.data();
    }
    if (length) {
        *length = static_cast<int32_t>(m_Text.size());
    }
    return text && length ? S_OK : E_POINTER;
}

int32_t CreatableString::SetString(tagREFString text) {
    if (!IsValid(text)) {
        return E_INVALIDARG;
    }
    return Guarded([&] {
        m_Text.assign(text.m_String, static_cast<size_t>(text.m_Length));
        return S_OK;
    });
}

int32_t CreatableString::AppendString(tagREFString text) {
    if (!IsValid(text)) {
        return E_INVALIDARG;
    }
    return Guarded([&] {
        m_Text.append(text.m_String, static_cast<size_t>(text.m_Length));
        return S_OK;
    });
}

int32_t HandOutString(std::string_view utf8, IString** text) {
    if (!text) {
        return E_POINTER;
    }
    *text = nullptr;
    return Guarded([&] {
        *text = CreatableString::Make(ToWide(utf8)).Detach();
        return S_OK;
    });
}
