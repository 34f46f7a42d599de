#include "host/settings/RegistryFile.h"

#include "host/text/KeyFile.h"
#include "host/text/Text.h"

#include <algorithm>

namespace {

std::optional<std::string> DefaultFor(
    const std::filesystem::path& folder, const std::string& section, const std::string& key) {
    if (section == "Workspace" && key == "InstallPath") {
        return folder.string();
    }
    if (section == "Workspace" && key == "CommonPath") {
        return (folder / "share").string();
    }
    return {};
}

void CopyTerminated(const std::wstring& text, wchar_t* buffer) {
    const size_t length = std::min(text.size(), size_t{REGISTRY_TEXT_CAPACITY - 1});
    std::copy_n(text.begin(), length, buffer);
    buffer[length] = L'\0';
}

} // namespace

int32_t RegistryFile::ReadString(const wchar_t* section, const wchar_t* key, wchar_t* buffer) {
    if (!section || !key || !buffer) {
        return E_POINTER;
    }
    return Guarded([&] {
        const std::string group = ToUtf8(Refer(std::wstring_view(section)));
        const std::string name = ToUtf8(Refer(std::wstring_view(key)));
        auto value = KeyFile(m_Folder / "treehost.ini").Read(group, name);
        if (!value) {
            value = DefaultFor(m_Folder, group, name);
        }
        if (!value) {
            return E_FAIL;
        }
        CopyTerminated(ToWide(*value), buffer);
        return S_OK;
    });
}
