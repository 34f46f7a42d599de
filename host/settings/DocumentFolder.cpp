#include "host/settings/DocumentFolder.h"

#include "framework/interfaces/ObjectInfo.h"
#include "framework/runtime/Components.h"
#include "host/text/Text.h"

#include <cstring>

namespace {

constexpr const char* kData = "data";
constexpr const char* kString = "string";
constexpr const char* kObject = "object"; ///< its value is the component's name, or null

std::string NameOf(IString* text) {
    return ToUtf8(CREFString(text));
}

/// Looks for an entry of a kind: E_INVALIDARG when there is none of that name. `use` gets the
/// value.
template <class Use>
int32_t FindEntry(
    const Database& database, int64_t folder, IString* entry, const char* kind, Use&& use) {
    Statement row(database, "SELECT kind, value FROM entry WHERE folder = ? AND name = ?", folder,
        NameOf(entry));
    if (!row.Step()) {
        return E_INVALIDARG;
    }
    return row.Bytes(0) == kind ? use(row) : E_FAIL;
}

/// The folder of an object, or 0.
int64_t FindObjectFolder(const Database& database, int64_t parent, const std::string& entry) {
    Statement row(database,
        "SELECT id FROM folder WHERE parent = ? AND position IS NULL AND name = ?", parent, entry);
    return row.Step() ? row.Integer(0) : 0;
}

/// Takes away a folder with everything in it.
void RemoveFolder(const Database& database, int64_t id) {
    const std::string below = "WITH RECURSIVE below(id) AS (SELECT ? UNION SELECT folder.id "
                              "FROM folder JOIN below ON parent = below.id) ";
    Statement(database, below + "DELETE FROM entry WHERE folder IN below", id).Step();
    Statement(database, below + "DELETE FROM folder WHERE id IN below", id).Step();
}

} // namespace

int64_t DocumentFolder::AddFolder(
    const Database& database, const std::string& name, bool isNumbered) const {
    Statement(database,
        "INSERT INTO folder(parent, position, name) VALUES(?1, CASE WHEN ?2 THEN "
        "(SELECT coalesce(max(position) + 1, 0) FROM folder WHERE parent = ?1) END, ?3)",
        m_ID, int64_t{isNumbered}, name)
        .Step();
    return database.LastRow();
}

template <class Value>
void DocumentFolder::Store(const Database& database, const std::string& entry, const char* kind,
    const Value& value) const {
    if (const int64_t previous = FindObjectFolder(database, m_ID, entry)) {
        RemoveFolder(database, previous);
    }
    Statement(database, "INSERT OR REPLACE INTO entry VALUES(?, ?, ?, ?)", m_ID, entry, kind, value)
        .Step();
}

int32_t DocumentFolder::CreateFolder(IString* name, int32_t /*mode*/, IFolderStream** folder) {
    if (!folder) {
        return E_POINTER;
    }
    *folder = nullptr;
    if (!name) {
        return E_POINTER;
    }
    return m_Store->Write([&](const Database& database) {
        if (m_Depth == 0) {
            return E_FAIL;
        }
        *folder = Below(AddFolder(database, NameOf(name), true)).Detach();
        return S_OK;
    });
}

int32_t DocumentFolder::WriteData(
    IString* entry, const void* data, int32_t size, int32_t /*mode*/) {
    if (!entry || !data) {
        return E_POINTER;
    }
    if (size < 0) {
        return E_INVALIDARG;
    }
    return m_Store->Write([&](const Database& database) {
        const auto* bytes = static_cast<const std::byte*>(data);
        Store(database, NameOf(entry), kData, std::span(bytes, static_cast<size_t>(size)));
        return S_OK;
    });
}

int32_t DocumentFolder::WriteString(IString* entry, IString* value) {
    if (!entry || !value) {
        return E_POINTER;
    }
    return m_Store->Write([&](const Database& database) {
        Store(database, NameOf(entry), kString, NameOf(value));
        return S_OK;
    });
}

int32_t DocumentFolder::WriteObject(IString* entry, IUnknown* object, int32_t /*mode*/) {
    if (!entry) {
        return E_POINTER;
    }
    return m_Store->Write([&](const Database& database) {
        if (!object) {
            Store(database, NameOf(entry), kObject, nullptr);
            return S_OK;
        }
        database.Run("SAVEPOINT object");
        const int32_t status = Persist(database, NameOf(entry), object);
        if (status < 0) {
            database.Run("ROLLBACK TO object");
        }
        database.Run("RELEASE object");
        return status;
    });
}

int32_t DocumentFolder::Persist(
    const Database& database, const std::string& entry, IUnknown* object) const {
    const auto info = Query<IObjectInfo>(object);
    const auto persist = Query<IDataPersist>(object);
    tagREFString component{0, nullptr};
    const bool isNamed = info && info->GetName(0, &component) >= 0 && component.m_Length > 0;
    if (!isNamed || !persist || m_Depth == 0) {
        return E_FAIL;
    }
    Store(database, entry, kObject, ToUtf8(component));
    const auto folder = Below(AddFolder(database, entry, false));
    return persist->Save(folder.Get(), 0);
}

int32_t DocumentFolder::ReadData(IString* entry, void* data, int32_t size, int32_t /*mode*/) {
    if (!entry || !data) {
        return E_POINTER;
    }
    return m_Store->Read([&](const Database& database) {
        return FindEntry(database, m_ID, entry, kData, [&](const Statement& row) {
            const std::string_view bytes = row.Bytes(1);
            if (size < 0 || bytes.size() != static_cast<size_t>(size)) {
                return E_FAIL;
            }
            std::copy(bytes.begin(), bytes.end(), static_cast<char*>(data));
            return S_OK;
        });
    });
}

int32_t DocumentFolder::ReadString(IString* entry, IString* value) {
    if (!entry || !value) {
        return E_POINTER;
    }
    const auto text = Query<ICreatableString>(value);
    if (!text) {
        return E_INVALIDARG;
    }
    return m_Store->Read([&](const Database& database) {
        return FindEntry(database, m_ID, entry, kString,
            [&](const Statement& row) { return text->SetString(Refer(ToWide(row.Bytes(1)))); });
    });
}

int32_t DocumentFolder::OpenFolder(IVariant* key, int32_t /*mode*/, IFolderStream** folder) {
    if (!folder) {
        return E_POINTER;
    }
    *folder = nullptr;
    if (!key) {
        return E_POINTER;
    }
    const double position = key->GetDouble();
    if (!(position >= 0 && position <= INT32_MAX)) {
        return E_INVALIDARG;
    }
    return m_Store->Read([&](const Database& database) {
        Statement row(database, "SELECT id FROM folder WHERE parent = ? AND position = ?", m_ID,
            static_cast<int64_t>(position));
        if (!row.Step()) {
            return E_INVALIDARG;
        }
        if (m_Depth == 0) {
            return E_FAIL;
        }
        *folder = Below(row.Integer(0)).Detach();
        return S_OK;
    });
}

int32_t DocumentFolder::ReadObject(IString* entry, IUnknown** object, int32_t /*mode*/) {
    if (!object) {
        return E_POINTER;
    }
    *object = nullptr;
    if (!entry) {
        return E_POINTER;
    }
    return m_Store->Read([&](const Database& database) {
        std::string component;
        const int32_t found = FindEntry(database, m_ID, entry, kObject, [&](const Statement& row) {
            component = row.Bytes(1);
            return row.IsNull(1) ? S_FALSE : S_OK;
        });
        if (found != S_OK) {
            return found < 0 ? found : S_OK;
        }
        return Restore(FindObjectFolder(database, m_ID, NameOf(entry)), component, object);
    });
}

int32_t DocumentFolder::Restore(int64_t id, const std::string& component, IUnknown** object) const {
    const std::wstring name = ToWide(component);
    auto created = Adopt(static_cast<IUnknown*>(CreateObject(Refer(name), &IID_IUnknown)));
    const auto persist = Query<IDataPersist>(created.Get());
    if (id == 0 || !persist || m_Depth == 0) {
        return E_FAIL;
    }
    const int32_t status = persist->Load(Below(id).Get(), 0);
    if (status >= 0) {
        *object = created.Detach();
    }
    return status;
}
