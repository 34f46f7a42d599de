#pragma once

#include "framework/interfaces/PropertyInterfaces.h"
#include "framework/interfaces/StreamInterfaces.h"
#include "framework/settings/ParameterTable.h"

// Settings in a folder stream: one sub-folder for each parameter, named for people by its display
// name (else its number), with the entries "ID", "Flags" and "Value". Only "ID" and the type in
// "Flags" count when they are loaded.
//
// `object` owns `table`; both operations answer S_OK whatever the stream does.

/// Writes the parameters in the table's order, but transient ones and actions. `strings` has the
/// display names; null for the host's own. Without memory or sub-folder a parameter is left out.
int32_t SaveToFolders(const ParameterTable& table, IUIPropInterrogateEx* object,
    INamedCollection* strings, IFolderStream* stream);

/// Sets the parameters found in the stream, in its order. What has no number, no parameter of that
/// type, or no value is skipped.
int32_t LoadFromFolders(
    const ParameterTable& table, IUIPropInterrogateEx* object, IFolderStream* stream);
