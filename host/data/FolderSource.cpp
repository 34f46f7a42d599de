#include "host/data/FolderSource.h"

#include "host/data/FileItem.h"
#include "host/text/Text.h"

#include <algorithm>
#include <filesystem>
#include <glib.h>
#include <memory>
#include <tuple>

namespace {

struct FolderEntry {
    bool m_IsFile;
    std::string m_SortKey;
    std::string m_Name; ///< as the system has it

    bool operator<(const FolderEntry& other) const {
        return std::tie(m_IsFile, m_SortKey, m_Name) <
               std::tie(other.m_IsFile, other.m_SortKey, other.m_Name);
    }
};

std::string SortKey(const std::string& name) {
    const std::string wellFormed = ToUtf8(Refer(ToWide(name)));
    const std::unique_ptr<char, void (*)(void*)> key(
        g_utf8_collate_key_for_filename(wellFormed.data(), static_cast<gssize>(wellFormed.size())),
        &g_free);
    return key.get();
}

/// The folder's entries in their order; what was read before an error stands.
std::vector<FolderEntry> ReadFolder(const std::string& path, std::error_code& error) {
    std::vector<FolderEntry> entries;
    std::filesystem::directory_iterator place(path, error);
    for (; !error && place != std::filesystem::directory_iterator(); place.increment(error)) {
        std::error_code unknown; // what cannot be looked at is shown as a file
        const bool isFolder = std::filesystem::is_directory(place->symlink_status(unknown));
        std::string name = place->path().filename().string();
        entries.push_back({!isFolder, SortKey(name), std::move(name)});
    }
    std::sort(entries.begin(), entries.end());
    return entries;
}

} // namespace

int32_t FolderSource::SetFileName(IString* fileName) {
    return Guarded([&] {
        m_Path = ToUtf8(CREFString(fileName));
        RemoveAll();
        m_Filled = false;
        return S_OK;
    });
}

int32_t FolderSource::Populate() {
    if (m_Filled) {
        return S_OK;
    }
    return Guarded([&] {
        RemoveAll(); // what an attempt that ran out of memory left
        std::error_code error;
        for (FolderEntry& entry : ReadFolder(m_Path, error)) {
            if (entry.m_IsFile) {
                Append(std::move(entry.m_Name), FileItem::Make().Get());
            } else {
                const auto folder = Make(m_Path + '/' + entry.m_Name);
                Append(std::move(entry.m_Name), folder->Identity());
            }
        }
        m_Filled = !error || !IsEmpty();
        return m_Filled ? S_OK : E_FAIL;
    });
}

int32_t FolderSource::GetContentState(int32_t selector, int32_t* value) {
    if (!value) {
        return E_POINTER;
    }
    *value = selector == CONTENTSTATE_ARCHIVE && m_Filled ? 1 : 0;
    return selector == CONTENTSTATE_ARCHIVE ? S_OK : E_INVALIDARG;
}
