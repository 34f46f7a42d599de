#pragma once

#include "framework/Interfaces.h"
#include "host/CreatableString.h"
#include "host/LiveObjects.h"
#include "host/Text.h"

#include <filesystem>
#include <gtest/gtest.h>

using LiveCounts = std::map<std::string, int32_t>;

/// Each test that makes objects ends with none of them left.
class HostTest : public testing::Test {
protected:
    void TearDown() override { EXPECT_EQ(LiveObjects(), LiveCounts{}); }
};

inline tagREFString Ref(std::wstring_view text) {
    return Refer(text);
}

inline SmartPtr<CreatableString> MakeString(std::wstring text) {
    return CreatableString::Make(std::move(text));
}

inline std::string TextOf(IString* text) {
    return ToUtf8(Refer(text));
}

inline int32_t CountOf(ISuperCollection* collection) {
    int32_t count = -1;
    collection->GetCount(&count);
    return count;
}

inline std::string NameAt(ISuperCollection* collection, int32_t index) {
    SmartPtr<IString> name;
    collection->GetItemName(index, name.Receive());
    return name ? TextOf(name.Get()) : "(none)";
}

inline SmartPtr<IUnknown> ItemAt(ISuperCollection* collection, int32_t index) {
    SmartPtr<IUnknown> item;
    collection->GetItem(index, item.Receive());
    return item;
}

/// The tree's labels with two blanks per level, whatever is visible.
inline std::string Dump(ISuperCollection* collection, size_t level = 0) {
    std::string text;
    for (int32_t i = 0; i < CountOf(collection); ++i) {
        text += std::string(2 * level, ' ') + NameAt(collection, i) + '\n';
        if (const auto below = Query<ISuperCollection>(ItemAt(collection, i).Get())) {
            text += Dump(below.Get(), level + 1);
        }
    }
    return text;
}

/// A folder for the test's own files, gone with it.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "treehost.XXXXXX").string();
        m_Path = mkdtemp(pattern.data()) ? pattern : "";
        EXPECT_NE(m_Path, "");
    }
    ~TemporaryFolder() { std::filesystem::remove_all(m_Path); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return m_Path; }

private:
    std::filesystem::path m_Path;
};

inline const std::filesystem::path& BuildFolder() {
    static const auto folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    return folder;
}
