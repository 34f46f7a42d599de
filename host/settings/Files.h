#pragma once

#include "host/settings/DocumentError.h"

#include <fstream>
#include <string_view>

/// Opens a file of settings to be read; `action` is what for, in the words of DocumentError. Throws
/// DocumentMissing, or DocumentError for what cannot be read or is no regular file.
std::ifstream OpenFile(const char* action, const std::string& file);

/// Replaces the content of a file in one step: whatever happens meanwhile, the file holds all of
/// the old content or all of the new. Its permissions stay, and its owner as far as the system
/// allows; a link stays one, and its target is replaced. A missing file is made. Throws
/// DocumentError.
void ReplaceFile(const std::string& file, std::string_view content);
