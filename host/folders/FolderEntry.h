#pragma once

#include "host/components/ItemLook.h"

#include <string>

/// An entry of a folder. Entries are ordered as a folder shows them: folders come first, and then
/// files, each of them by name in the order of the program's locale.
struct FolderEntry {
    FolderEntry(std::string name, ItemLook look);

    bool operator<(const FolderEntry& other) const;
    bool IsFolder() const { return m_Look.m_Kind == ItemKind::kFolder; }

    std::string m_Name; ///< as the system has it
    std::string m_SortKey;
    ItemLook m_Look;
};

/// What a file is, by its name and by whether it may be run.
ItemKind KindOfFile(const std::string& name, bool isProgram);
