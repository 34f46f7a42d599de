#include "host/settings/DocumentInMemory.h"

#include "host/components/CreatableString.h"

std::string DocumentInMemory::Describe() const {
    std::string text;
    m_Store->Read([&](const Database& database) {
        Statement rows(database,
            "SELECT folder.name || ':' || group_concat(' ' || entry.name || '=' || CASE kind "
            "WHEN 'data' THEN hex(value) ELSE coalesce(value, 'null') END, '') || char(10) "
            "FROM folder JOIN entry ON folder.id = entry.folder WHERE position NOT NULL "
            "GROUP BY position");
        while (rows.Step()) {
            text += rows.Bytes(0);
        }
        return S_OK;
    });
    return text;
}

void DocumentInMemory::Add(
    int32_t id, uint32_t flags, std::string_view value, const wchar_t* entry) const {
    SmartPtr<IFolderStream> folder;
    m_Root->CreateFolder(CreatableString::Make(L"any").Get(), 0, folder.Receive());
    folder->WriteData(CreatableString::Make(entry).Get(), &id, sizeof(id), 0);
    folder->WriteData(CreatableString::Make(L"Flags").Get(), &flags, sizeof(flags), 0);
    if (!value.empty()) {
        folder->WriteData(
            CreatableString::Make(L"Value").Get(), value.data(), int32_t(value.size()), 0);
    }
}
