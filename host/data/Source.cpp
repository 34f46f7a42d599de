#include "host/data/Source.h"

#include "host/data/ArchiveSource.h"
#include "host/data/FolderSource.h"
#include "host/data/JsonSource.h"
#include "host/data/OutlineSource.h"
#include "host/data/XmlSource.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

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

/// Makes room for what is expected, so that it need not be copied while it grows.
void MakeRoom(std::string& text, size_t expected) {
    try {
        text.reserve(expected);
    } catch (const std::exception&) { // it is read as far as there is memory, then
    }
}

/// What there is of a text before it ends or fails.
std::string ReadAll(std::istream& input, size_t expected = 0) {
    constexpr size_t kChunk = size_t{1} << 16;
    std::string text;
    MakeRoom(text, expected + kChunk);
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

SourceKind KindByContent(std::string_view text) {
    constexpr std::string_view kXml[] = {
        "<", "\xEF\xBB\xBF<", {"\xFF\xFE<", 3}, {"\xFE\xFF\0<", 4}};
    const auto begins = [&](std::string_view mark) { return text.starts_with(mark); };
    if (IsArchive({"", text})) {
        return SourceKind::kArchive;
    }
    if (std::any_of(std::begin(kXml), std::end(kXml), begins)) {
        return SourceKind::kXml;
    }
    return begins("{") || begins("[") ? SourceKind::kJson : SourceKind::kOutline;
}

/// The same as for JSON and XML; what is wrong with an outline is that memory does not hold it.
SmartPtr<ISuperCollection> ReadOutlineText(std::string text, std::string& fault) {
    std::istringstream lines(std::move(text));
    auto tree = ReadOutline(lines);
    if (lines.bad()) {
        fault = std::generic_category().message(ENOMEM);
    }
    return tree;
}

SmartPtr<ISuperCollection> ReadKind(SourceKind kind, std::string text, std::string& fault) {
    switch (kind) {
    case SourceKind::kArchive:
        return ReadArchive({"", text}, fault);
    case SourceKind::kJson:
        return ReadJson(std::move(text), fault);
    case SourceKind::kXml:
        return ReadXml(std::move(text), fault);
    default:
        return ReadOutlineText(std::move(text), fault);
    }
}

/// Reads what was in a stream; what is wrong in it is named as `name`.
SmartPtr<ISuperCollection> ReadText(
    std::string text, const std::string& name, SourceKind kind, ReadFailures& failures) {
    std::string fault;
    kind = kind == SourceKind::kByContent ? KindByContent(text) : kind;
    auto tree = ReadKind(kind, std::move(text), fault);
    if (!fault.empty()) {
        failures.AddFault(name, fault);
    }
    return tree;
}

/// An archive's file is read only where its list is.
SmartPtr<ISuperCollection> OpenArchive(const std::string& path, ReadFailures& failures) {
    std::string fault;
    auto tree = ReadArchive({path}, fault);
    if (!fault.empty()) {
        failures.AddFault(path, fault);
    }
    return tree;
}

SmartPtr<ISuperCollection> OpenFile(
    const std::string& path, SourceKind kind, ReadFailures& failures) {
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    std::error_code unknown; // a pipe has no size
    const auto size = std::filesystem::file_size(path, unknown);
    std::string text = ReadAll(file, unknown ? 0 : static_cast<size_t>(size));
    if (!file.is_open() || file.bad()) {
        failures.Add(path, LastError());
    }
    return ReadText(std::move(text), path, kind, failures);
}

SmartPtr<ISuperCollection> OpenInput(SourceKind kind, ReadFailures& failures) {
    constexpr const char* kName = "standard input";
    errno = 0;
    std::string text = ReadAll(std::cin);
    if (std::cin.bad() || std::ferror(stdin) != 0) {
        failures.Add(kName, LastError());
    }
    return ReadText(std::move(text), kName, kind, failures);
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
    if (std::filesystem::is_directory(status)) {
        return OpenFolder(path, {failures, watch});
    }
    // What is no regular file, a pipe for one, can be read only once.
    const bool isArchive =
        std::filesystem::is_regular_file(status) &&
        (kind == SourceKind::kArchive || (kind == SourceKind::kByContent && IsArchive({path})));
    return isArchive ? OpenArchive(path, *failures) : OpenFile(path, kind, *failures);
}
