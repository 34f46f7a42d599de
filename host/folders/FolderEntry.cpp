#include "host/folders/FolderEntry.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <tuple>

namespace {

/// What sorts as the names do in the locale, byte by byte.
std::string SortKey(const std::string& name) {
    std::string key(std::strxfrm(nullptr, name.c_str(), 0), '\0');
    std::strxfrm(key.data(), name.c_str(), key.size() + 1);
    return key;
}

} // namespace

FolderEntry::FolderEntry(std::string name, ItemLook look)
    : m_Name(std::move(name)), m_SortKey(SortKey(m_Name)), m_Look(look) {}

bool FolderEntry::operator<(const FolderEntry& other) const {
    const auto key = [](const FolderEntry& entry) {
        return std::tuple<bool, const std::string&, const std::string&>(
            !entry.IsFolder(), entry.m_SortKey, entry.m_Name);
    };
    return key(*this) < key(other);
}

ItemKind KindOfFile(const std::string& name, bool isProgram) {
    constexpr std::string_view kImages[] = {
        ".png", ".jpg", ".jpeg", ".gif", ".svg", ".webp", ".bmp", ".ico", ".tif", ".tiff"};
    constexpr std::string_view kTexts[] = {".txt", ".md", ".rst", ".log", ".ini", ".conf", ".json",
        ".xml", ".yaml", ".yml", ".csv", ".html", ".css", ".js", ".py", ".sh", ".c", ".h", ".cpp",
        ".hpp", ".cmake"};
    const auto has = [suffix = std::filesystem::path(name).extension().string()](
                         const auto& suffixes) {
        return std::find(std::begin(suffixes), std::end(suffixes), suffix) != std::end(suffixes);
    };
    if (has(kImages)) {
        return ItemKind::kImage;
    }
    if (isProgram) {
        return ItemKind::kProgram;
    }
    return has(kTexts) ? ItemKind::kText : ItemKind::kFile;
}
