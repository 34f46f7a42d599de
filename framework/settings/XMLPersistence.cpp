#include "framework/settings/XMLPersistence.h"

#include "framework/settings/DisplayNames.h"
#include "framework/settings/ParameterValues.h"
#include "framework/support/HostStrings.h"
#include "framework/support/Values.h"
#include "framework/support/XMLIndex.h"
#include "framework/support/XMLTag.h"

#include <utility>
#include <vector>

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
    // A string may be missing; a number lacks its text only when memory has run out.
    if (text || parameter.Type() == PROPTYPE_STRING) {
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

/// The parameters by their names, each of which the host is asked for once, when it is needed.
/// Made with all the memory that it needs: throws std::bad_alloc before anything is loaded.
class NamedParameters {
public:
    NamedParameters(const ParameterTable& table, const DisplayNames& names)
        : m_Table(table), m_Names(names) {
        m_Known.reserve(table.Records().size());
    }

    /// The first one of a name; null when there is none.
    const PROPParameter* Find(const CREFString& name) {
        for (size_t i = 0; name.m_Length > 0 && (i < m_Known.size() || TakeNext()); ++i) {
            if (IsEqualIgnoringCase(name, CREFString(m_Known[i].second.Get()))) {
                return m_Known[i].first;
            }
        }
        return nullptr;
    }

private:
    bool TakeNext() {
        while (m_Taken < m_Table.Records().size()) {
            const PROPParameter* parameter = m_Table.Records()[m_Taken++];
            if (!parameter->IsTransient()) {
                m_Known.emplace_back(parameter, m_Names.FindByNumber(parameter->m_ID));
                return true;
            }
        }
        return false;
    }

    const ParameterTable& m_Table;
    const DisplayNames& m_Names;
    size_t m_Taken = 0;
    std::vector<std::pair<const PROPParameter*, SmartPtr<IString>>> m_Known;
};

void LoadText(const ParameterTable& table, IUIPropInterrogateEx& object, const DisplayNames& names,
    CREFString text) {
    NamedParameters parameters(table, names);
    XMLIndex index;
    XMLFoundTag tag;
    while (XMLFindTag(text, tag)) {
        CREFString attributes;
        CREFString content;
        if (XMLGetTAGGED(text, tag.m_Text, attributes, content, 1, index) < 0) {
            text = tag.m_Rest; // a tag that is not written as it reads: "< Name>"
            continue;
        }
        if (const PROPParameter* parameter = parameters.Find(tag.m_Text)) {
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
