#include "host/data/Source.h"

#include "host/data/FolderSource.h"
#include "host/data/OutlineSource.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>

namespace {

SmartPtr<ISuperCollection> OpenFolder(const std::string& path) {
    const auto folder = FolderSource::Make(path);
    folder->Populate(); // one that cannot be read is shown empty
    return SmartPtr<ISuperCollection>(folder.Get());
}

SmartPtr<ISuperCollection> OpenOutline(const std::string& path) {
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot read " + path + ": " + std::strerror(errno));
    }
    return ReadOutline(file);
}

} // namespace

SmartPtr<ISuperCollection> OpenSource(const std::string& path) {
    if (path == "-") {
        return ReadOutline(std::cin);
    }
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status)) {
        throw SourceMissing("cannot open " + path + ": " + error.message());
    }
    return std::filesystem::is_directory(status) ? OpenFolder(path) : OpenOutline(path);
}
