#pragma once

#include "host/text/Text.h"

#include <stdexcept>

/// A file of settings that cannot be loaded or saved. The text is one line, which names the file.
struct DocumentError : std::runtime_error {
    /// `action` is "load" or "save".
    DocumentError(const char* action, const std::string& file, const std::string& reason)
        : std::runtime_error(std::string("cannot ") + action + " " +
                             ToPrintable(Refer(ToWide(file))) + ": " + reason) {}
};

/// There is no such file to load.
struct DocumentMissing : DocumentError {
    using DocumentError::DocumentError;
};
