#include "framework/settings/FolderPersistence.h"

#include "framework/settings/DisplayNames.h"
#include "framework/settings/ParameterValues.h"
#include "framework/support/HostStrings.h"

namespace {

/// The names of the entries, made before anything is stored or set: nothing is done by halves when
/// there is no memory for them.
struct EntryNames {
    SmartPtr<ICreatableString> number = Adopt(ISCreate(L"ID"));
    SmartPtr<ICreatableString> flags = Adopt(ISCreate(L"Flags"));
    SmartPtr<ICreatableString> value = Adopt(ISCreate(L"Value"));

    bool Exist() const { return number && flags && value; }
};
using EntryName = SmartPtr<ICreatableString>;

template <class Number>
void WriteNumber(IFolderStream& folder, const EntryName& entry, Number number) {
    folder.WriteData(entry.Get(), &number, sizeof(number), 0);
}

template <class Number>
bool ReadNumber(IFolderStream& folder, const EntryName& entry, Number& number) {
    return folder.ReadData(entry.Get(), &number, sizeof(number), 0) >= 0;
}

class FolderSaver {
public:
    FolderSaver(IUIPropInterrogateEx& object, INamedCollection* strings, IFolderStream& stream)
        : m_Object(object), m_Names(strings, &object), m_Stream(stream) {}

    void Save(const ParameterTable& table) const {
        for (const PROPParameter* parameter : table.Records()) {
            if (m_Entries.Exist() && !parameter->IsTransient()) {
                SaveParameter(*parameter);
            }
        }
    }

private:
    void SaveParameter(const PROPParameter& parameter) const {
        auto name = m_Names.FindByText(parameter.m_ID);
        if (!name) {
            name = Adopt<IString>(ISCreate(parameter.m_ID));
        }
        switch (parameter.Type()) {
        case PROPTYPE_NONE:
        case PROPTYPE_BYTE:
        case PROPTYPE_SHORT:
        case PROPTYPE_LONG:
            return SaveNumber(parameter, name, InquireLong(m_Object, parameter.m_ID));
        case PROPTYPE_FLOAT:
        case PROPTYPE_DOUBLE:
            return SaveNumber(parameter, name, InquireReal(m_Object, parameter.m_ID));
        case PROPTYPE_STRING:
            return SaveText(parameter, name);
        case PROPTYPE_OBJECT:
            return SaveObject(parameter, name);
        default:
            return;
        }
    }

    /// A new sub-folder that tells whose it is.
    SmartPtr<IFolderStream> CreateFolder(
        const PROPParameter& parameter, const SmartPtr<IString>& name) const {
        SmartPtr<IFolderStream> folder;
        if (name) {
            m_Stream.CreateFolder(name.Get(), 0, folder.Receive());
        }
        if (folder) {
            WriteNumber(*folder.Get(), m_Entries.number, parameter.m_ID);
            WriteNumber(*folder.Get(), m_Entries.flags, parameter.m_Flags);
        }
        return folder;
    }

    template <class Number>
    void SaveNumber(
        const PROPParameter& parameter, const SmartPtr<IString>& name, Number number) const {
        if (const auto folder = CreateFolder(parameter, name)) {
            WriteNumber(*folder.Get(), m_Entries.value, number);
        }
    }

    void SaveText(const PROPParameter& parameter, const SmartPtr<IString>& name) const {
        if (const auto folder = CreateFolder(parameter, name)) {
            const auto text = InquireText(m_Object, parameter);
            folder->WriteString(m_Entries.value.Get(), text.Get());
        }
    }

    void SaveObject(const PROPParameter& parameter, const SmartPtr<IString>& name) const {
        if (const auto folder = CreateFolder(parameter, name)) {
            SmartPtr<IUnknown> value;
            m_Object.InquireEx(parameter.m_ID, value.Receive());
            folder->WriteObject(m_Entries.value.Get(), value.Get(), 0);
        }
    }

    IUIPropInterrogateEx& m_Object;
    DisplayNames m_Names;
    IFolderStream& m_Stream;
    EntryNames m_Entries;
};

/// Sets the parameter `id` to the value in a sub-folder, which is of the type in `flags`.
void LoadValue(IUIPropInterrogateEx& object, int32_t id, uint32_t flags, IFolderStream& folder,
    const EntryName& entry) {
    switch (flags & PROPTYPE_MASK) {
    case PROPTYPE_NONE:
    case PROPTYPE_BYTE:
    case PROPTYPE_SHORT:
    case PROPTYPE_LONG:
        if (int32_t value = 0; ReadNumber(folder, entry, value)) {
            object.Control(id, value);
        }
        return;
    case PROPTYPE_FLOAT:
    case PROPTYPE_DOUBLE:
        if (double value = 0; ReadNumber(folder, entry, value)) {
            ControlReal(object, id, value);
        }
        return;
    case PROPTYPE_STRING: {
        auto text = Adopt<IString>(CREFString::CreateString());
        if (text) {
            folder.ReadString(entry.Get(), text.Get());
        }
        return ControlText(object, id, std::move(text), (flags & PROPFLAG_FILENAME) != 0);
    }
    case PROPTYPE_OBJECT: {
        SmartPtr<IUnknown> value;
        folder.ReadObject(entry.Get(), value.Receive(), 0);
        object.ControlEx(id, value.Get());
        return;
    }
    default:
        return;
    }
}

void LoadFolder(const ParameterTable& table, IUIPropInterrogateEx& object, IFolderStream& folder,
    const EntryNames& entries) {
    int32_t id = 0;
    uint32_t flags = 0;
    if (!ReadNumber(folder, entries.number, id) || !ReadNumber(folder, entries.flags, flags)) {
        return;
    }
    const PROPParameter* parameter = table.Find(id);
    if (parameter && parameter->Type() == (flags & PROPTYPE_MASK) && !parameter->IsTransient()) {
        LoadValue(object, id, flags, folder, entries.value);
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
        if (stream) {
            FolderSaver(*object, strings, *stream).Save(table);
        }
    });
}

int32_t LoadFromFolders(
    const ParameterTable& table, IUIPropInterrogateEx* object, IFolderStream* stream) {
    return Persist(object, [&] {
        const EntryNames entries;
        for (int32_t position = 0; stream && entries.Exist() && position < INT32_MAX; ++position) {
            const auto folder = OpenFolder(*stream, position);
            if (!folder) {
                return;
            }
            LoadFolder(table, *object, *folder.Get(), entries);
        }
    });
}
