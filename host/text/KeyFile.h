#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

using GKeyFile = struct _GKeyFile;

/// A file of sections with keys and values, UTF-8. One that is missing or damaged has none.
class KeyFile {
public:
    explicit KeyFile(const std::filesystem::path& path);

    std::optional<std::string> Read(const std::string& section, const std::string& key) const;
    std::vector<std::string> KeysOf(const std::string& section) const;

private:
    struct Closer {
        void operator()(GKeyFile* file) const;
    };

    std::unique_ptr<GKeyFile, Closer> m_File; ///< null when it cannot be read
};
