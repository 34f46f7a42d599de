#pragma once

#include "framework/interfaces/FileInterfaces.h"
#include "host/data/CollectionVersion.h"
#include "host/data/SuperCollection.h"
#include "host/documents/DocumentText.h"
#include "host/drawing/DrawnItem.h"

/// A part of a text as a collection, read when it is asked to be, as a folder is. Its text lives as
/// long as something of it is still to be read.
class DocumentBranch final : public HostObject<DocumentBranch, SuperCollectionBase,
                                 CollectionVersion, IFileArchive, DrawnItem> {
public:
    static constexpr const char* kKind = "DocumentBranch";

    /// Without a text, one that holds what it is given.
    explicit DocumentBranch(
        ItemKind kind, DocumentTextPtr text = nullptr, const DocumentPart& part = {})
        : m_Text(std::move(text)), m_Part(part) {
        SetLook({kind});
    }

    /// The whole text, which was read. Throws when memory runs out.
    static SmartPtr<ISuperCollection> MakeRoot(const DocumentTextPtr& text, DocumentRows rows);

    int32_t SetFileName(IString* /*fileName*/) override { return E_FAIL; }
    /// Reads the part once. E_FAIL when memory runs out; a later call tries again.
    int32_t Populate() override;
    int32_t GetContentState(int32_t selector, int32_t* value) override;

private:
    DocumentTextPtr m_Text; ///< null once it is read
    DocumentPart m_Part;
};
