#include "host/data/Source.h"

#include "host/data/FolderSource.h"
#include "host/data/JsonSource.h"
#include "host/data/OutlineSource.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>

namespace {

SmartPtr<ISuperCollection> OpenFolder(const std::string& path, const FolderHelpers& helpers) {
    const auto folder = FolderSource::Make(path, helpers);
    folder->Populate(); // one that cannot be read is shown empty
    return SmartPtr<ISuperCollection>(folder.Get());
}

/// The number of the error that has just ended the reading of a stream.
int LastError() {
    return errno != 0 ? errno : EIO;
}

/// What there is of a text before it ends or fails.
std::string ReadAll(std::istream& input) {
    constexpr size_t kChunk = size_t{1} << 16;
    std::string text;
    try {
        do {
            const size_t size = text.size();
            text.resize(size + kChunk);
            input.read(text.data() + size, kChunk);
            text.resize(size + static_cast<size_t>(input.gcount()));
        } while (input);
    } catch (const std::bad_alloc&) {
        errno = ENOMEM;
        input.setstate(std::ios::badbit);
    }
    return text;
}

bool BeginsAsJson(std::istream& input) {
    const int first = input.peek();
    return first == '{' || first == '[';
}

/// Reads a stream; what fails or is wrong in it is named as `name`.
SmartPtr<ISuperCollection> Read(
    std::istream& input, const std::string& name, SourceKind kind, ReadFailures& failures) {
    if (kind == SourceKind::kOutline || (kind == SourceKind::kByContent && !BeginsAsJson(input))) {
        return ReadOutline(input);
    }
    std::string fault;
    auto tree = ReadJson(ReadAll(input), fault);
    if (!fault.empty()) {
        failures.AddFault(name, fault);
    }
    return tree;
}

SmartPtr<ISuperCollection> OpenFile(
    const std::string& path, SourceKind kind, ReadFailures& failures) {
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    auto tree = Read(file, path, kind, failures);
    if (!file.is_open() || file.bad()) {
        failures.Add(path, LastError());
    }
    return tree;
}

SmartPtr<ISuperCollection> OpenInput(SourceKind kind, ReadFailures& failures) {
    constexpr const char* kName = "standard input";
    errno = 0;
    auto tree = Read(std::cin, kName, kind, failures);
    if (std::cin.bad() || std::ferror(stdin) != 0) {
        failures.Add(kName, LastError());
    }
    return tree;
}

} // namespace

SmartPtr<ISuperCollection> OpenSource(const std::string& path, const ReadFailuresPtr& failures,
    SourceKind kind, const FolderWatchPtr& watch) {
    if (path == "-") {
        return OpenInput(kind, *failures);
    }
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status)) {
        throw SourceMissing("cannot open " + path + ": " + error.message());
    }
    return std::filesystem::is_directory(status) ? OpenFolder(path, {failures, watch})
                                                 : OpenFile(path, kind, *failures);
}
