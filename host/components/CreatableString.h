#pragma once

#include "host/components/HostObject.h"

#include <string>
#include <string_view>

/// The component "CreatableString", the host's string. Its characters are zero-terminated.
class CreatableString final : public HostObject<CreatableString, ICreatableString> {
public:
    static constexpr const char* kKind = "CreatableString";

    CreatableString() = default;
    explicit CreatableString(std::wstring text) : m_Text(std::move(text)) {}

    int32_t GetString(wchar_t** text, int32_t* length) override;
    int32_t SetString(tagREFString text) override;
    int32_t AppendString(tagREFString text) override;

private:
    std::wstring m_Text;
};

/// Hands out a new host string holding `utf8`; null and E_FAIL when memory runs out.
int32_t HandOutString(std::string_view utf8, IString** text);
