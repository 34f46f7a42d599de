#pragma once

#include "framework/Interfaces.h"
#include "host/components/CreatableString.h"
#include "host/components/LiveObjects.h"
#include "host/text/Text.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

/// Each test that makes objects gives them all back, those of its fixture included.
class HostTest : public testing::Test {
protected:
    ~HostTest() override { EXPECT_EQ(LiveObjects(), m_Before); }

private:
    const std::map<std::string, int32_t> m_Before = LiveObjects();
};

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

inline std::string Content(const std::filesystem::path& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline std::string Repeated(std::string_view text, size_t count) {
    std::string all;
    while (count-- > 0) {
        all += text;
    }
    return all;
}

inline std::filesystem::path BuildFolder() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path();
}

/// The program as a shell starts it, on another machine through its emulator.
inline std::string Treehost(const std::filesystem::path& folder = BuildFolder()) {
    return EMULATOR " '" + (folder / "treehost").string() + "' ";
}
