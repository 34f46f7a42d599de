#include "host/sources/Source.h"

#include "host/documents/DocumentBranch.h"
#include "host/documents/JsonText.h"
#include "host/documents/XmlText.h"
#include "host/reading/ReadBytes.h"
#include "host/sources/ArchiveSource.h"
#include "host/sources/OutlineSource.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <sstream>

namespace {

/// One that cannot be read is shown empty.
SourceMaker ReadFolderTree(
    const std::string& path, const FolderWatchPtr& watch, ReadProgress* progress) {
    const auto shared = std::make_shared<FolderHelpers>(FolderHelpers{.m_Watch = watch});
    const auto folder = FolderSource::Make(path, shared);
    const std::error_code error = folder->ReadNew(progress);
    return SourceMaker([path, shared, folder, error](const FolderHelpers& helpers) {
        *shared = helpers;
        if (error) {
            helpers.m_Failures->Add(path, error.value());
        }
        return SmartPtr<ISuperCollection>(folder.Get());
    });
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

/// Hands on a tree that was made here, and names what is wrong with it.
SourceMaker MakerOf(SmartPtr<ISuperCollection> tree, const std::string& name, std::string fault) {
    return SourceMaker([tree = std::move(tree), name, fault = std::move(fault)](
                           const FolderHelpers& helpers) mutable {
        if (!fault.empty()) {
            helpers.m_Failures->AddFault(name, fault);
        }
        return std::move(tree);
    });
}

SourceMaker ReadOutlineText(std::string text, const std::string& name, ReadProgress* progress) {
    const size_t size = text.size();
    std::istringstream lines(std::move(text));
    auto tree = ReadOutline(lines, progress, size);
    return MakerOf(
        std::move(tree), name, lines.bad() ? std::generic_category().message(ENOMEM) : "");
}

SourceMaker ReadDocument(DocumentTextPtr text, const std::string& name, ReadProgress* progress) {
    Afterwards over(progress);
    const std::string fault = text->Fault();
    const auto document = std::make_shared<DocumentHelpers>(std::move(text), name);
    auto make = MakerOf(DocumentBranch::MakeRoot(document, &over), name, fault);
    return SourceMaker([document, make = std::move(make)](const FolderHelpers& helpers) mutable {
        document->SetReads(helpers.m_Reads);
        return std::move(make)(helpers);
    });
}

/// Goes through what was in a file, which is named as `name`.
SourceMaker ReadKind(
    SourceKind kind, ReadBytes bytes, const std::string& name, ReadProgress* progress) {
    SecondHalf half(progress);
    const IndexOptions options{.m_Progress = &half, .m_IsCut = bytes.m_IsCut};
    switch (kind == SourceKind::kByContent ? KindByContent(bytes.m_Text) : kind) {
    case SourceKind::kArchive: {
        std::string fault;
        auto tree = ReadArchive({"", bytes.m_Text}, fault, &half);
        return MakerOf(std::move(tree), name, std::move(fault));
    }
    case SourceKind::kJson:
        return ReadDocument(IndexJson(std::move(bytes.m_Text), options), name, progress);
    case SourceKind::kXml:
        return ReadDocument(IndexXml(std::move(bytes.m_Text), options), name, progress);
    default:
        return ReadOutlineText(std::move(bytes.m_Text), name, &half);
    }
}

/// An archive's file is read only where its list is.
SourceMaker ReadArchiveFile(const std::string& path, ReadProgress* progress) {
    std::string fault;
    auto tree = ReadArchive({path}, fault, progress);
    return MakerOf(std::move(tree), path, std::move(fault));
}

SourceMaker ReadFile(
    const std::string& path, const std::string& name, SourceKind kind, ReadProgress* progress) {
    ReadBytes bytes = ByteSource(path).Read(progress);
    const int error = bytes.m_Error;
    SourceMaker make = ReadKind(kind, std::move(bytes), name, progress);
    return SourceMaker([error, name, make = std::move(make)](const FolderHelpers& helpers) mutable {
        if (error != 0) {
            helpers.m_Failures->Add(name, error);
        }
        return std::move(make)(helpers);
    });
}

} // namespace

SourceMaker ReadSource(
    const std::string& path, SourceKind kind, ReadProgress* progress, const FolderWatchPtr& watch) {
    if (path == "-") {
        return ReadFile(path, "standard input", kind, progress);
    }
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status)) {
        throw SourceMissing("cannot open " + path + ": " + error.message());
    }
    if (std::filesystem::is_directory(status)) {
        return ReadFolderTree(path, watch, progress);
    }
    // What is no regular file, a pipe for one, can be read only once.
    const bool isArchive =
        std::filesystem::is_regular_file(status) &&
        (kind == SourceKind::kArchive || (kind == SourceKind::kByContent && IsArchive({path})));
    if (isArchive) {
        return ReadArchiveFile(path, progress);
    }
    return ReadFile(path, path, kind, progress);
}

SmartPtr<ISuperCollection> OpenSource(const std::string& path, SourceKind kind,
    const FolderHelpers& helpers, ReadProgress* progress) {
    return ReadSource(path, kind, progress, helpers.m_Watch)(helpers);
}
