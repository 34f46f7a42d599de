#pragma once

#include "framework/interfaces/CollectionInterfaces.h"
#include "framework/runtime/SmartPtr.h"
#include "host/data/FolderWatch.h"
#include "host/data/ReadFailures.h"

#include <stdexcept>
#include <string>

/// There is no such input.
struct SourceMissing : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// How a text is read.
enum class SourceKind {
    kByContent, ///< as what it is or begins as, or else as an outline
    kOutline,
    kJson, ///< or JSON Lines
    kXml,
    kArchive ///< tar, compressed or not, zip or 7z
};

/// The data behind a path: a folder, whose first level is read at once; a file; or standard input
/// for "-". What cannot be read, now or when a folder is opened, is
/// missing from the collection and named in `failures`. Folders that
/// are read are watched by `watch`. Throws SourceMissing for what does not
/// exist.
SmartPtr<ISuperCollection> OpenSource(const std::string& path, const ReadFailuresPtr& failures,
    SourceKind kind = SourceKind::kByContent, const FolderWatchPtr& watch = nullptr);
