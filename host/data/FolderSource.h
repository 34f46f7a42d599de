#pragma once

#include "framework/interfaces/FileInterfaces.h"
#include "host/data/SuperCollection.h"

#include <string>

/// A folder of the file system as a collection, read when it is asked to: folders first, then by
/// name. Symbolic links are not followed, they are shown as files. A folder that cannot be read
/// stays empty.
class FolderSource final
    : public HostObject<FolderSource, SuperCollectionBase, CollectionVersion, IFileArchive> {
public:
    static constexpr const char* kKind = "FolderSource";

    FolderSource() = default;
    /// `path` as the system has it, which need not be UTF-8.
    explicit FolderSource(std::string path) : m_Path(std::move(path)) {}

    int32_t SetFileName(IString* fileName) override;
    /// Reads the folder once. E_FAIL when it cannot be read; a later call tries again.
    int32_t Populate() override;
    int32_t GetContentState(int32_t selector, int32_t* value) override;

private:
    std::string m_Path;
    bool m_Filled = false;
};
