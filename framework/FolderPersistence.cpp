#include "framework/FolderPersistence.h"

#include "framework/DisplayNames.h"
#include "framework/HostStrings.h"
#include "framework/ParameterValues.h"

namespace {

constexpr const wchar_t* kNumberEntry = L"ID";
constexpr const wchar_t* kFlagsEntry = L"Flags";
constexpr const wchar_t* kValueEntry = L"Value";

/// Runs an operation of a folder on one of its entries; E_FAIL when that cannot be named.
template <class Operation>
int32_t WithEntry(const wchar_t* entry, Operation&& operation) {
    const auto name = Adopt(ISCreate(entry));
    return name ? operation(name.Get()) : E_FAIL;
}

template <class Number>
void WriteNumber(IFolderStream& folder, const wchar_t* entry, Number number) {
    WithEntry(
        entry, [&](IString* name) { return folder.WriteData(name, &number, sizeof(number), 0); });
}

template <class Number>
bool ReadNumber(IFolderStream& folder, const wchar_t* entry, Number& number) {
    return WithEntry(entry, [&](IString* name) {
        return folder.ReadData(name, &number, sizeof(number), 0);
    }) >= 0;
}

class FolderSaver {
public:
    FolderSaver(IUIPropInterrogateEx& object, const DisplayNames& names, IFolderStream& stream)
        : m_Object(object), m_Names(names), m_Stream(stream) {}

    void Save(const PROPParameter& parameter) const {
        const int32_t id = parameter.m_ID;
        switch (parameter.Type()) {
        case PROPTYPE_NONE:
        case PROPTYPE_BYTE:
        case PROPTYPE_SHORT:
        case PROPTYPE_LONG:
            return SaveNumber(parameter, InquireLong(m_Object, id));
        case PROPTYPE_FLOAT:
        case PROPTYPE_DOUBLE:
            return SaveNumber(parameter, InquireReal(m_Object, id));
        case PROPTYPE_STRING:
            return SaveText(parameter);
        case PROPTYPE_OBJECT:
            return SaveObject(parameter);
        default:
            return;
        }
    }

private:
    /// A new sub-folder for the parameter, which tells whose it is.
    SmartPtr<IFolderStream> CreateFolder(const PROPParameter& parameter) const {
        auto name = m_Names.FindByText(parameter.m_ID);
        if (!name) {
            name = Adopt<IString>(ISCreate(parameter.m_ID));
        }
        SmartPtr<IFolderStream> folder;
        if (name) {
            m_Stream.CreateFolder(name.Get(), 0, folder.Receive());
        }
        if (folder) {
            WriteNumber(*folder.Get(), kNumberEntry, parameter.m_ID);
            WriteNumber(*folder.Get(), kFlagsEntry, parameter.m_Flags);
        }
        return folder;
    }

    template <class Number>
    void SaveNumber(const PROPParameter& parameter, Number number) const {
        if (const auto folder = CreateFolder(parameter)) {
            WriteNumber(*folder.Get(), kValueEntry, number);
        }
    }

    void SaveText(const PROPParameter& parameter) const {
        if (const auto folder = CreateFolder(parameter)) {
            const auto text = InquireText(m_Object, parameter);
            WithEntry(
                kValueEntry, [&](IString* name) { return folder->WriteString(name, text.Get()); });
        }
    }

    void SaveObject(const PROPParameter& parameter) const {
        if (const auto folder = CreateFolder(parameter)) {
            SmartPtr<IUnknown> value;
            m_Object.InquireEx(parameter.m_ID, value.Receive());
            WithEntry(kValueEntry,
                [&](IString* name) { return folder->WriteObject(name, value.Get(), 0); });
        }
    }

    IUIPropInterrogateEx& m_Object;
    const DisplayNames& m_Names;
    IFolderStream& m_Stream;
};

/// Sets the parameter `id` to the value in a sub-folder, which is of the type in `flags`.
void LoadValue(IUIPropInterrogateEx& object, int32_t id, uint32_t flags, IFolderStream& folder) {
    switch (flags & PROPTYPE_MASK) {
    case PROPTYPE_NONE:
    case PROPTYPE_BYTE:
    case PROPTYPE_SHORT:
    case PROPTYPE_LONG:
        if (int32_t value = 0; ReadNumber(folder, kValueEntry, value)) {
            object.Control(id, value);
        }
        return;
    case PROPTYPE_FLOAT:
    case PROPTYPE_DOUBLE:
        if (double value = 0; ReadNumber(folder, kValueEntry, value)) {
            ControlReal(object, id, value);
        }
        return;
    case PROPTYPE_STRING: {
        auto text = Adopt<IString>(CREFString::CreateString());
        WithEntry(kValueEntry,
            [&](IString* name) { return text ? folder.ReadString(name, text.Get()) : E_FAIL; });
        return ControlText(object, id, std::move(text), (flags & PROPFLAG_FILENAME) != 0);
    }
    case PROPTYPE_OBJECT: {
        SmartPtr<IUnknown> value;
        WithEntry(kValueEntry,
            [&](IString* name) { return folder.ReadObject(name, value.Receive(), 0); });
        object.ControlEx(id, value.Get());
        return;
    }
    default:
        return;
    }
}

void LoadFolder(const ParameterTable& table, IUIPropInterrogateEx& object, IFolderStream& folder) {
    int32_t id = 0;
    uint32_t flags = 0;
    if (!ReadNumber(folder, kNumberEntry, id) || !ReadNumber(folder, kFlagsEntry, flags)) {
        return;
    }
    const PROPParameter* parameter = table.Find(id);
    if (parameter && parameter->Type() == (flags & PROPTYPE_MASK) && !parameter->IsTransient()) {
        LoadValue(object, id, flags, folder);
    }
}

/// The sub-folder at a position; empty when there is none.
SmartPtr<IFolderStream> OpenFolder(IFolderStream& stream, int32_t position) {
    SmartPtr<IFolderStream> folder;
    const auto key = Adopt(CREFString::CreateVariant());
    if (!key) {
        return folder;
    }
    key->SetLong(position);
    const int32_t status = stream.OpenFolder(key.Get(), 0, folder.Receive());
    return status < 0 ? SmartPtr<IFolderStream>() : folder;
}

} // namespace

int32_t SaveToFolders(const ParameterTable& table, IUIPropInterrogateEx* object,
    INamedCollection* strings, IFolderStream* stream) {
    return Persist(object, [&] {
        if (!stream) {
            return;
        }
        const DisplayNames names(strings, object);
        const FolderSaver saver(*object, names, *stream);
        for (const PROPParameter* parameter : table.Records()) {
            if (!parameter->IsTransient()) {
                saver.Save(*parameter);
            }
        }
    });
}

int32_t LoadFromFolders(
    const ParameterTable& table, IUIPropInterrogateEx* object, IFolderStream* stream) {
    return Persist(object, [&] {
        for (int32_t position = 0; stream && position < INT32_MAX; ++position) {
            const auto folder = OpenFolder(*stream, position);
            if (!folder) {
                return;
            }
            LoadFolder(table, *object, *folder.Get());
        }
    });
}
