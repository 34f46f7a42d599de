#pragma once

#include "framework/interfaces/DrawingInterfaces.h"
#include "framework/interfaces/FileInterfaces.h"
#include "host/data/ReadFailures.h"
#include "host/data/SuperCollection.h"

#include <string>
#include <sys/types.h>

/// What tells folders apart, however they are reached, and those above on the path that was taken.
struct FolderPath {
    dev_t m_Device;
    ino_t m_Inode;
    std::shared_ptr<const FolderPath> m_Above;
};
using FolderPathPtr = std::shared_ptr<const FolderPath>;

/// A folder of the file system as a collection, read when it is asked to: folders first, each kind
/// by name in the order of the program's locale. A linked folder is one too, unless it leads back
/// to a folder on its own path: that one is shown as a file. A folder that cannot be read stays
/// empty.
class FolderSource final : public HostObject<FolderSource, SuperCollectionBase, CollectionVersion,
                               IFileArchive, IRenderableObject> {
public:
    static constexpr const char* kKind = "FolderSource";

    FolderSource() = default;
    /// `path` as the system has it, which need not be UTF-8. What cannot be read goes to
    /// `failures`, where there are any.
    explicit FolderSource(std::string path, ReadFailuresPtr failures = nullptr,
        FolderPathPtr above = nullptr, bool isLink = false)
        : m_Path(std::move(path)), m_Failures(std::move(failures)), m_Above(std::move(above)),
          m_IsLink(isLink) {}

    int32_t SetFileName(IString* fileName) override;
    /// Reads the folder once. E_FAIL when it cannot be read; a later call tries again.
    int32_t Populate() override;
    int32_t GetContentState(int32_t selector, int32_t* value) override;

    int32_t Render(
        UbuntuCanvas* canvas, CANVASRect* rect, IUnknown* context, int32_t param) override;

private:
    bool ReadEntries();

    std::string m_Path;
    ReadFailuresPtr m_Failures;
    FolderPathPtr m_Above;
    bool m_IsLink = false; ///< reached by a link, and drawn as one
    bool m_Filled = false;
};
