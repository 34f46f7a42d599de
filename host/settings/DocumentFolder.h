#pragma once

#include "framework/interfaces/StreamInterfaces.h"
#include "host/components/HostObject.h"
#include "host/settings/DocumentStore.h"

/// How many folders lie within each other at most: what reads them may need its stack for each.
constexpr int32_t DOCUMENT_DEEPESTFOLDER = 64;

/// The stream of one folder of a document. Folders are addressed by their positions: creating one
/// whose name there is already makes a second one. Entries are addressed by their names: writing
/// one again replaces it. Objects are stored in folders of their own, which have no position.
/// Answers E_INVALIDARG for what there is not, E_FAIL for what is of another kind or size, and
/// E_FAIL to everything after the document failed or is gone.
class DocumentFolder final : public HostObject<DocumentFolder, IDataStream, IFolderStream> {
public:
    static constexpr const char* kKind = "DocumentFolder";

    /// `depth` is how many folders may lie within this one.
    DocumentFolder(std::shared_ptr<DocumentStore> store, int64_t id, int32_t depth)
        : m_Store(std::move(store)), m_ID(id), m_Depth(depth) {}

    int32_t CreateFolder(IString* name, int32_t mode, IFolderStream** folder) override;
    int32_t WriteData(IString* entry, const void* data, int32_t size, int32_t mode) override;
    int32_t WriteString(IString* entry, IString* value) override;
    /// Stores the name of the object's component, and what the object saves of itself. E_FAIL when
    /// it has no name or cannot save itself: nothing is stored then.
    int32_t WriteObject(IString* entry, IUnknown* object, int32_t mode) override;
    /// E_FAIL, with nothing stored in `data`, unless exactly `size` bytes are there.
    int32_t ReadData(IString* entry, void* data, int32_t size, int32_t mode) override;
    int32_t ReadString(IString* entry, IString* value) override;
    int32_t OpenFolder(IVariant* key, int32_t mode, IFolderStream** folder) override;
    /// E_FAIL and null when the component is not registered or cannot load itself.
    int32_t ReadObject(IString* entry, IUnknown** object, int32_t mode) override;

private:
    int64_t AddFolder(const Database& database, const std::string& name, bool isNumbered) const;
    SmartPtr<DocumentFolder> Below(int64_t id) const { return Make(m_Store, id, m_Depth - 1); }
    template <class Value>
    void Store(const Database& database, const std::string& entry, const char* kind,
        const Value& value) const;
    int32_t Persist(const Database& database, const std::string& entry, IUnknown* object) const;
    int32_t Restore(int64_t id, const std::string& component, IUnknown** object) const;

    std::shared_ptr<DocumentStore> m_Store;
    int64_t m_ID;
    int32_t m_Depth;
};
