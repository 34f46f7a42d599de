#pragma once

#include "framework/Interfaces.h"
#include "framework/interfaces/Export.h"

// The least that the control's walks can cost: the same host calls in straight loops on bare
// pointers. They lie in a module of their own, as the control does, because a processor calls from
// a module into the program's distant code more slowly than within the program.

/// Counts the visible rows.
MODULE_EXPORT int64_t CountBare(ISuperCollection* collection);

/// Shows all items.
MODULE_EXPORT void ShowBare(ISuperCollection* collection);
