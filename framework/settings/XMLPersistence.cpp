#include "framework/settings/XMLPersistence.h"

#include "framework/settings/DisplayNames.h"
#include "framework/settings/ParameterValues.h"
#include "framework/support/HostStrings.h"
#include "framework/support/Values.h"
#include "framework/support/XMLTag.h"

#include <cwctype>

namespace {

constexpr int kDecimal = 10;

bool IsColor(const PROPParameter& parameter) {
    return parameter.m_Flags == (PROPTYPE_LONG | PROPFLAG_COLOR);
}

void SaveElement(const PROPParameter& parameter, IUIPropInterrogateEx& object,
    const DisplayNames& names, IXMLStream& stream) {
    const auto name = names.FindByNumber(parameter.m_ID);
    SmartPtr<IString> text;
    switch (parameter.Type()) {
    case PROPTYPE_NONE:
    case PROPTYPE_BYTE:
    case PROPTYPE_SHORT:
    case PROPTYPE_LONG: {
        const int32_t value = InquireLong(object, parameter.m_ID);
        text.Attach(IsColor(parameter) ? ISCreateHex(value) : ISCreate(value));
        break;
    }
    case PROPTYPE_FLOAT:
    case PROPTYPE_DOUBLE:
        text.Attach(ISCreate(InquireReal(object, parameter.m_ID)));
        break;
    case PROPTYPE_STRING:
        text = InquireText(object, parameter);
        break;
    default:
        return;
    }
    if (text ||
        parameter.Type() == PROPTYPE_STRING) { // a number lacks its text without memory only
        stream.WriteElement(name.Get(), 0, text.Get(), 0);
    }
}

void LoadValue(
    const PROPParameter& parameter, IUIPropInterrogateEx& object, const CREFString& content) {
    switch (parameter.Type()) {
    case PROPTYPE_NONE:
    case PROPTYPE_BYTE:
    case PROPTYPE_SHORT:
    case PROPTYPE_LONG:
        object.Control(parameter.m_ID, _IS2Integer(content, kDecimal)); // colours have their '#'
        return;
    case PROPTYPE_FLOAT:
    case PROPTYPE_DOUBLE:
        return ControlReal(object, parameter.m_ID, _IS2Double(content));
    case PROPTYPE_STRING:
        return ControlText(
            object, parameter.m_ID, Adopt<IString>(ISCreate(content)), parameter.IsFileName());
    default:
        return;
    }
}

bool IsBlank(wchar_t character) {
    return std::iswspace(static_cast<wint_t>(character)) != 0 ||
           std::iswcntrl(static_cast<wint_t>(character)) != 0;
}

/// The text of the first opening tag without the markup around it, trimmed; the text behind it in
/// `rest`. False when there is none.
bool FindTag(const CREFString& text, CREFString& tag, CREFString& rest) {
    const std::wstring_view whole = ViewOf(text);
    size_t start = whole.find(L'<');
    while (start < whole.size() && (start + 1 == whole.size() || whole[start + 1] == L'/')) {
        start = whole.find(L'<', start + 1);
    }
    const size_t end = whole.find(L'>', start);
    if (end == std::wstring_view::npos) {
        return false;
    }
    const wchar_t* first = whole.data() + start + 1;
    const wchar_t* last = whole.data() + end;
    while (first < last && IsBlank(*first)) {
        ++first;
    }
    while (first < last && IsBlank(last[-1])) {
        --last;
    }
    tag = tagREFString{static_cast<int32_t>(last - first), first};
    rest = tagREFString{static_cast<int32_t>(whole.size() - end) - 1, whole.data() + end + 1};
    return true;
}

const PROPParameter* FindParameter(
    const ParameterTable& table, const DisplayNames& names, const CREFString& tag) {
    for (const PROPParameter* parameter : table.Records()) {
        if (parameter->IsTransient() || tag.m_Length == 0) {
            continue;
        }
        const auto name = names.FindByNumber(parameter->m_ID);
        if (IsEqualIgnoringCase(tag, CREFString(name.Get()))) {
            return parameter;
        }
    }
    return nullptr;
}

void LoadText(const ParameterTable& table, IUIPropInterrogateEx& object, const DisplayNames& names,
    CREFString text) {
    CREFString tag;
    CREFString rest;
    while (FindTag(text, tag, rest)) {
        CREFString attributes;
        CREFString content;
        if (XMLGetTAGGED(text, tag, attributes, content, 1) < 0) {
            text = rest; // a tag that is not written as it reads: "< Name>"
            continue;
        }
        if (const PROPParameter* parameter = FindParameter(table, names, tag)) {
            LoadValue(*parameter, object, content);
        }
    }
}

/// Runs the body of a saving or loading with the stream and the names, if there are both.
template <class Body>
int32_t PersistAsXML(
    IUIPropInterrogateEx* object, INamedCollection* strings, IDataStream* stream, Body&& body) {
    return Persist(object, [&] {
        const auto xml = Query<IXMLStream>(stream);
        if (!xml) {
            return;
        }
        const DisplayNames names(strings, object);
        if (names.Exist()) {
            body(*xml.Get(), names);
        }
    });
}

} // namespace

int32_t SaveToXML(const ParameterTable& table, IUIPropInterrogateEx* object,
    INamedCollection* strings, IDataStream* stream) {
    return PersistAsXML(object, strings, stream, [&](IXMLStream& xml, const DisplayNames& names) {
        for (const PROPParameter* parameter : table.Records()) {
            if (!parameter->IsTransient()) {
                SaveElement(*parameter, *object, names, xml);
            }
        }
    });
}

int32_t LoadFromXML(const ParameterTable& table, IUIPropInterrogateEx* object,
    INamedCollection* strings, IDataStream* stream) {
    return PersistAsXML(object, strings, stream, [&](IXMLStream&, const DisplayNames& names) {
        const auto text = Query<IString>(stream); // has to outlive the references into it
        LoadText(table, *object, names, CREFString(text.Get()));
    });
}
