#include "host/text/KeyFile.h"

#include <glib.h>

namespace {

struct TextFreer {
    void operator()(char* text) const { g_free(text); }
};
struct ListFreer {
    void operator()(char** list) const { g_strfreev(list); }
};

} // namespace

void KeyFile::Closer::operator()(GKeyFile* file) const {
    g_key_file_free(file);
}

KeyFile::KeyFile(const std::filesystem::path& path) : m_File(g_key_file_new()) {
    if (!g_key_file_load_from_file(m_File.get(), path.c_str(), G_KEY_FILE_NONE, nullptr)) {
        m_File.reset();
    }
}

std::optional<std::string> KeyFile::Read(const std::string& section, const std::string& key) const {
    if (!m_File) {
        return {};
    }
    const std::unique_ptr<char, TextFreer> value(
        g_key_file_get_string(m_File.get(), section.c_str(), key.c_str(), nullptr));
    return value ? std::optional<std::string>(value.get()) : std::nullopt;
}

std::vector<std::string> KeyFile::KeysOf(const std::string& section) const {
    if (!m_File) {
        return {};
    }
    gsize count = 0;
    const std::unique_ptr<char*, ListFreer> keys(
        g_key_file_get_keys(m_File.get(), section.c_str(), &count, nullptr));
    return keys ? std::vector<std::string>(keys.get(), keys.get() + count)
                : std::vector<std::string>();
}
