#include "framework/support/XMLTag.h"

#include "framework/support/XMLIndex.h"
#include "framework/support/XMLPattern.h"

#include <algorithm>
#include <cwctype>

namespace {

constexpr int32_t kNotFound = XMLPattern::kNotFound;

tagREFString FirstOf(tagREFString text, int32_t length) {
    return {length, text.m_String};
}

tagREFString WithoutFirst(tagREFString text, int32_t length) {
    return {text.m_Length - length, text.m_String + length};
}

/// Splits an opening tag, from after its name on, from what follows it.
void TakeAttributes(CREFString& rest, CREFString& attributes) {
    const size_t end = ViewOf(rest).find(L'>');
    if (end == std::wstring_view::npos) {
        attributes = rest;
        return;
    }
    attributes = FirstOf(rest, static_cast<int32_t>(end));
    for (const wchar_t mark : {L'?', L'/'}) {
        if (attributes.m_Length > 0 && attributes.m_String[attributes.m_Length - 1] == mark) {
            --attributes.m_Length;
        }
    }
    rest = WithoutFirst(rest, static_cast<int32_t>(end) + 1);
}

/// XMLGetTAGGED with an index, if there is one.
int32_t GetTagged(CREFString& text, const CREFString& tag, CREFString& attributes,
    CREFString& content, short advance, XMLIndex* index) {
    const tagREFString name = XMLNameOf(tag);
    content = text;
    if (index && !index->MayOpen(text, name)) {
        return E_FAIL;
    }
    const int32_t start = XMLPattern::Opening(ViewOf(name)).EndOfMatch(ViewOf(text));
    if (start == kNotFound) {
        if (index) {
            index->NeverOpens(text, name);
        }
        return E_FAIL;
    }
    CREFString rest = WithoutFirst(text, start);
    TakeAttributes(rest, attributes);

    const auto closing = XMLPattern::Closing(ViewOf(name));
    const bool mayClose = !index || index->MayClose(rest, name);
    const int32_t end = mayClose ? closing.EndOfMatch(ViewOf(rest)) : kNotFound;
    const bool isClosed = end != kNotFound;
    if (index && mayClose && !isClosed) {
        index->NeverCloses(rest);
    }
    content = FirstOf(rest, isClosed ? end - closing.Length() : 0);
    if (advance != 0) {
        text = isClosed ? WithoutFirst(rest, end) : rest;
    }
    return S_OK;
}

bool IsBlank(wchar_t character) {
    return std::iswspace(static_cast<wint_t>(character)) != 0 ||
           std::iswcntrl(static_cast<wint_t>(character)) != 0;
}

} // namespace

int32_t XMLGetTAGGED(
    CREFString& text, CREFString& tag, CREFString& attributes, CREFString& content, short advance) {
    return GetTagged(text, tag, attributes, content, advance, nullptr);
}

int32_t XMLGetTAGGED(CREFString& text, CREFString& tag, CREFString& attributes, CREFString& content,
    short advance, XMLIndex& index) {
    return GetTagged(text, tag, attributes, content, advance, &index);
}

tagREFString XMLNameOf(const tagREFString& tag) {
    const std::wstring_view whole = ViewOf(tag);
    const size_t end = std::min(whole.find_first_of(L" \r>"), whole.size());
    return FirstOf(tag, static_cast<int32_t>(end));
}

bool XMLFindTag(const CREFString& text, XMLFoundTag& tag) {
    const std::wstring_view whole = ViewOf(text);
    if (!whole.empty() && tag.m_Start >= whole.data()) {
        return true;
    }
    size_t start = whole.find(L'<');
    while (start < whole.size() && (start + 1 == whole.size() || whole[start + 1] == L'/')) {
        start = whole.find(L'<', start + 1);
    }
    const size_t end = whole.find(L'>', start);
    if (end == std::wstring_view::npos) {
        return false;
    }
    tag.m_Start = whole.data() + start;
    tag.m_Rest = WithoutFirst(text, static_cast<int32_t>(end) + 1);
    const wchar_t* first = tag.m_Start + 1;
    const wchar_t* last = whole.data() + end;
    while (IsBlank(*first)) { // the '>' is none
        ++first;
    }
    while (first < last && IsBlank(last[-1])) {
        --last;
    }
    tag.m_Text = tagREFString{static_cast<int32_t>(last - first), first};
    return true;
}
