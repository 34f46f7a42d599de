#pragma once

#include "framework/interfaces/CollectionInterfaces.h"
#include "framework/runtime/SmartPtr.h"
#include "host/data/ReadFailures.h"

#include <stdexcept>
#include <string>

/// There is no such input.
struct SourceMissing : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The data behind a path: a folder, whose first level is read at once; a file, read as an indented
/// outline; or standard input for "-". What cannot be read, now or when a folder is opened, is
/// missing from the collection and named in `failures`. Throws SourceMissing for what does not
/// exist.
SmartPtr<ISuperCollection> OpenSource(const std::string& path, const ReadFailuresPtr& failures);
