#pragma once

#include "framework/interfaces/CollectionInterfaces.h"
#include "framework/runtime/SmartPtr.h"
#include "host/reading/ReadProgress.h"

#include <istream>

/// Reads an indented outline: a line that is indented deeper than the line before is its child.
/// Tabs advance to the next multiple of 8; blank lines do not count. What a failing stream still
/// gave is the outline, and a text that memory does not hold makes the stream fail. `progress`,
/// which may be null, hears how much of `size` bytes was read. Any thread may read. Throws
/// std::bad_alloc.
SmartPtr<ISuperCollection> ReadOutline(
    std::istream& input, ReadProgress* progress = nullptr, size_t size = 0);
