#include "host/RegistryFile.h"

#include "host/Text.h"

#include <algorithm>
#include <glib.h>
#include <memory>
#include <optional>

namespace {

struct KeyFileDeleter {
    void operator()(GKeyFile* file) const { g_key_file_free(file); }
};
struct GlibDeleter {
    void operator()(char* text) const { g_free(text); }
};

std::optional<std::string> ReadFromFile(
    const std::filesystem::path& path, const std::string& section, const std::string& key) {
    const std::unique_ptr<GKeyFile, KeyFileDeleter> file(g_key_file_new());
    if (!g_key_file_load_from_file(file.get(), path.c_str(), G_KEY_FILE_NONE, nullptr)) {
        return {};
    }
    const std::unique_ptr<char, GlibDeleter> value(
        g_key_file_get_string(file.get(), section.c_str(), key.c_str(), nullptr));
    return value ? std::optional<std::string>(value.get()) : std::nullopt;
}

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
        auto value = ReadFromFile(m_Folder / "treehost.ini", group, name);
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
