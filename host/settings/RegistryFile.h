#pragma once

#include "framework/interfaces/FileInterfaces.h"
#include "host/components/HostObject.h"

#include <filesystem>

/// The component "Registry": the settings in `treehost.ini` in the program's folder, with defaults
/// for those that the framework needs.
class RegistryFile final : public HostObject<RegistryFile, IRegistryEx> {
public:
    static constexpr const char* kKind = "RegistryFile";

    explicit RegistryFile(std::filesystem::path folder) : m_Folder(std::move(folder)) {}

    /// A value longer than the buffer is cut. Unknown values: E_FAIL, the buffer is left alone.
    int32_t ReadString(const wchar_t* section, const wchar_t* key, wchar_t* buffer) override;

private:
    std::filesystem::path m_Folder;
};
