#pragma once

#include "host/settings/DocumentFolder.h"

/// A document in memory, made and looked at entry by entry.
class DocumentInMemory {
public:
    /// Borrowed.
    DocumentFolder* Root() const { return m_Root.Get(); }
    /// The sub-folders in order with their entries by name: "<folder>: <entry>=<value> ...".
    std::string Describe() const;
    /// Adds the folder of a parameter; without a value when that is empty.
    void Add(
        int32_t id, uint32_t flags, std::string_view value, const wchar_t* entry = L"ID") const;

private:
    std::shared_ptr<DocumentStore> m_Store = std::make_shared<DocumentStore>(OpenInMemory(), true);
    SmartPtr<DocumentFolder> m_Root = DocumentFolder::Make(m_Store, DOCUMENT_ROOTFOLDER, 2);
};
