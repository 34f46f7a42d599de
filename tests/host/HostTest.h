#pragma once

#include "framework/Interfaces.h"
#include "host/CreatableString.h"
#include "host/LiveObjects.h"
#include "host/Text.h"

#include <filesystem>
#include <gtest/gtest.h>

/// Each test that makes objects gives them all back, those of its fixture included.
class HostTest : public testing::Test {
protected:
    ~HostTest() override { EXPECT_EQ(LiveObjects(), m_Before); }

private:
    const std::map<std::string, int32_t> m_Before = LiveObjects();
};

inline int32_t CountOf(ISuperCollection* collection) {
    int32_t count = -1;
    collection->GetCount(&count);
    return count;
}

inline std::string NameAt(ISuperCollection* collection, int32_t index) {
    SmartPtr<IString> name;
    collection->GetItemName(index, name.Receive());
    return name ? ToUtf8(Refer(name.Get())) : "(none)";
}

inline SmartPtr<IUnknown> ItemAt(ISuperCollection* collection, int32_t index) {
    SmartPtr<IUnknown> item;
    collection->GetItem(index, item.Receive());
    return item;
}

/// A folder for the test's own files, gone with it.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string pattern = std::filesystem::temp_directory_path() / "treehost.XXXXXX";
        m_Path = mkdtemp(pattern.data()) ? pattern : "";
        EXPECT_NE(m_Path, "");
    }
    ~TemporaryFolder() { std::filesystem::remove_all(m_Path); }

    std::filesystem::path operator/(const std::string& name) const { return m_Path / name; }

private:
    std::filesystem::path m_Path;
};

inline std::filesystem::path BuildFolder() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path();
}
