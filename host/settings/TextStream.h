#pragma once

#include "framework/interfaces/StreamInterfaces.h"
#include "framework/interfaces/TextInterfaces.h"
#include "host/components/HostObject.h"

#include <string>

/// A text that a component reads as XML, whatever its size; nothing is written to it.
class TextStream final : public HostObject<TextStream, IDataStream, IXMLStream, IString> {
public:
    static constexpr const char* kKind = "TextStream";

    explicit TextStream(std::wstring text) : m_Text(std::move(text)) {}
    int32_t WriteElement(IString*, int32_t, IString*, int32_t) override { return E_FAIL; }
    int32_t GetString(wchar_t** text, int32_t* length) override {
        *text = m_Text.data();
        *length = static_cast<int32_t>(m_Text.size());
        return S_OK;
    }

private:
    std::wstring m_Text;
};
