#include "host/settings/XmlFile.h"

#include "framework/support/REFString.h"
#include "host/settings/Files.h"

#include <algorithm>
#include <cwctype>
#include <optional>

namespace {

constexpr const wchar_t* kBlanks = L" \t\r\n";

bool IsElementName(std::wstring_view name) {
    return !name.empty() && std::none_of(name.begin(), name.end(), [](wchar_t character) {
        return std::wstring_view(L"<>/").find(character) != std::wstring_view::npos ||
               std::iswspace(static_cast<wint_t>(character)) ||
               std::iswcntrl(static_cast<wint_t>(character));
    });
}

/// Where a mark ends; 0 when there is none.
size_t EndOf(std::wstring_view text, std::wstring_view mark) {
    const size_t start = text.find(mark);
    return start == std::wstring_view::npos ? 0 : start + mark.size();
}

std::wstring_view Trimmed(std::wstring_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

/// What a text begins with and how long that is.
struct Found {
    size_t m_Length = 0; ///< 0 for anything else, an element in which there are others included
    XmlFile::Item m_Item = {};
};

Found FindItem(std::wstring_view text) {
    if (text.starts_with(L"<?") || text.starts_with(L"<!--")) {
        return {EndOf(text, text[1] == L'?' ? L"?>" : L"-->")};
    }
    const std::wstring_view tag = text.substr(0, EndOf(text, L">"));
    if (!tag.starts_with(L'<')) {
        return {};
    }
    const std::wstring_view name = tag.substr(1, tag.find_first_of(L" \t\r\n>") - 1);
    const std::wstring end = L"</" + std::wstring(name) + L">";
    const size_t content = std::min(text.find(L"</", tag.size()), text.size());
    if (!IsElementName(name) || !text.substr(content).starts_with(end)) {
        return {};
    }
    return {content + end.size(), {name, Trimmed(text.substr(tag.size(), content - tag.size()))}};
}

/// The items of a text, which is nothing but elements side by side: what would not survive a save
/// is no file of settings, and gives nothing.
std::optional<std::vector<XmlFile::Item>> ItemsOf(std::wstring_view text) {
    std::vector<XmlFile::Item> items;
    int32_t line = 1;
    const auto skip = [&](size_t length) {
        line +=
            static_cast<int32_t>(std::count(text.begin(), text.begin() + ptrdiff_t(length), L'\n'));
        text.remove_prefix(length);
    };
    while (true) {
        skip(std::min(text.find_first_not_of(kBlanks), text.size()));
        const Found found = FindItem(text);
        if (found.m_Length == 0) {
            return text.empty() ? std::optional(std::move(items)) : std::nullopt;
        }
        items.push_back({found.m_Item.m_Name, found.m_Item.m_Content, line});
        skip(found.m_Length);
    }
}

std::string Read(const std::string& file) {
    std::ifstream stream = OpenFile("load", file);
    const std::streamoff size = stream.seekg(0, std::ios::end).tellg();
    if (size > static_cast<std::streamoff>(XMLFILE_LARGEST)) {
        throw DocumentError("load", file, "it is too large");
    }
    std::string bytes(static_cast<size_t>(std::max<std::streamoff>(size, 0)), '\0');
    if (!stream.seekg(0).read(bytes.data(), static_cast<std::streamsize>(bytes.size()))) {
        throw DocumentError("load", file, "it cannot be read");
    }
    return bytes;
}

} // namespace

SmartPtr<XmlFile> XmlFile::Load(const std::string& file) {
    const std::string bytes = Read(file);
    auto stream = Make();
    stream->m_Text = ToWide(bytes);
    if (ToUtf8(Refer(stream->m_Text)) != bytes) {
        throw DocumentError("load", file, "it is no UTF-8 text");
    }
    if (!ItemsOf(stream->m_Text)) {
        throw DocumentError("load", file, "it is no file of settings");
    }
    return stream;
}

std::vector<XmlFile::Item> XmlFile::Items() const {
    return ItemsOf(m_Text).value_or(std::vector<Item>());
}

int32_t XmlFile::WriteElement(IString* name, int32_t /*mode*/, IString* value, int32_t /*flags*/) {
    if (!value) {
        return E_POINTER;
    }
    const int32_t status = Guarded([&] {
        const std::wstring tag(ViewOf(CREFString(name)));
        const std::wstring_view content = ViewOf(CREFString(value));
        if (!IsElementName(tag) || content.find(L"</") != std::wstring_view::npos) {
            return E_INVALIDARG;
        }
        std::wstring element = L"<" + tag + L">";
        m_Text += element.append(content) + L"</" + tag + L">\n";
        return S_OK;
    });
    m_IsIncomplete |= status < 0;
    return status;
}

int32_t XmlFile::GetString(wchar_t** text, int32_t* length) {
    if (text) {
        *text = m_Text.data();
    }
    if (length) {
        *length = static_cast<int32_t>(m_Text.size());
    }
    return text && length ? S_OK : E_POINTER;
}

void XmlFile::Commit(const std::string& file) const {
    if (m_IsIncomplete) {
        throw DocumentError("save", file, "a setting cannot be written as an element");
    }
    if (m_Text.empty()) {
        throw DocumentError("save", file, "no setting has a name");
    }
    const std::string bytes = ToUtf8(Refer(m_Text));
    if (bytes.size() > XMLFILE_LARGEST) {
        throw DocumentError("save", file, "it would be too large");
    }
    ReplaceFile(file, bytes);
}
