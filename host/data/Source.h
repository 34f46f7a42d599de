#pragma once

#include "framework/interfaces/CollectionInterfaces.h"
#include "framework/runtime/SmartPtr.h"

#include <stdexcept>
#include <string>

/// There is no such input.
struct SourceMissing : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The data behind a path: a folder, whose first level is read at once; a file, read as an indented
/// outline; or standard input for "-". Throws SourceMissing for what does not exist, and
/// std::runtime_error for a file that cannot be read.
SmartPtr<ISuperCollection> OpenSource(const std::string& path);
