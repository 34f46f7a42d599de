#pragma once

#include "framework/interfaces/TextInterfaces.h"

// File names are stored relative to the installation folder, so that a saved configuration survives
// a move of the installation, and made absolute again when loaded. Relative names go up a folder
// with `..\`; absolute names use `/`.

/// The base folders of the installation. `path` receives a new string, empty when nothing could be
/// read (null without host strings); the result is the status of the registry's read.
int32_t FILENAMEGetInstallPath(IString** path);
int32_t FILENAMEGetCommonPath(IString** path);

/// `path` relative to the folder `base` (named without a trailing separator). `result` receives a
/// new string, or `path` itself with one reference when the two share no folder below the first.
int32_t FILENAMECreateRelative(IString* base, IString* path, IString** result);

/// `path` made absolute below the installation folder. `result` receives a new string, or `path`
/// itself with one reference when it is absolute or no relative name. Backslashes become slashes in
/// the argument's own characters.
int32_t FILENAMECreateAbsolute(IString* path, IString** result);
