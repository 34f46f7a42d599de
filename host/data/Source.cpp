#include "host/data/Source.h"

#include "host/data/FolderSource.h"
#include "host/data/OutlineSource.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>

namespace {

SmartPtr<ISuperCollection> OpenFolder(const std::string& path, const ReadFailuresPtr& failures) {
    const auto folder = FolderSource::Make(path, failures);
    folder->Populate(); // one that cannot be read is shown empty
    return SmartPtr<ISuperCollection>(folder.Get());
}

/// The number of the error that has just ended the reading of a stream.
int LastError() {
    return errno != 0 ? errno : EIO;
}

SmartPtr<ISuperCollection> OpenOutline(const std::string& path, ReadFailures& failures) {
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    auto outline = ReadOutline(file);
    if (!file.is_open() || file.bad()) {
        failures.Add(path, LastError());
    }
    return outline;
}

SmartPtr<ISuperCollection> OpenInput(ReadFailures& failures) {
    errno = 0;
    auto outline = ReadOutline(std::cin);
    if (std::cin.bad() || std::ferror(stdin) != 0) {
        failures.Add("standard input", LastError());
    }
    return outline;
}

} // namespace

SmartPtr<ISuperCollection> OpenSource(const std::string& path, const ReadFailuresPtr& failures) {
    if (path == "-") {
        return OpenInput(*failures);
    }
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status)) {
        throw SourceMissing("cannot open " + path + ": " + error.message());
    }
    return std::filesystem::is_directory(status) ? OpenFolder(path, failures)
                                                 : OpenOutline(path, *failures);
}
