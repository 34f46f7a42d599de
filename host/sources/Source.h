#pragma once

#include "host/folders/FolderSource.h"
#include "host/reading/Background.h"
#include "host/reading/ReadProgress.h"
#include "host/sources/Once.h"

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

/// Makes the tree of a source that was read, on the thread of host objects. What cannot be read,
/// now or when a folder is opened, is missing from the tree and named in the failures. Throws when
/// memory runs out.
using SourceMaker = Once<SmartPtr<ISuperCollection>(const FolderHelpers& helpers)>;

/// Reads a source on a thread of its own.
using BackgroundReading = Background<SourceMaker>;

/// Reads what is behind a path: the first level of a folder; a file; or standard input for "-". Any
/// thread may do so. `progress` may be null; so may `watch`, which else is that of the helpers, and
/// watches a folder from before it is read. Throws SourceMissing for what does not exist, and
/// std::bad_alloc.
SourceMaker ReadSource(const std::string& path, SourceKind kind, ReadProgress* progress,
    const FolderWatchPtr& watch = nullptr);

/// Reads a source and makes its tree.
SmartPtr<ISuperCollection> OpenSource(const std::string& path,
    SourceKind kind = SourceKind::kByContent, const FolderHelpers& helpers = {},
    ReadProgress* progress = nullptr);
