#pragma once

#include "framework/interfaces/CollectionInterfaces.h"
#include "framework/runtime/SmartPtr.h"
#include "host/reading/ReadProgress.h"

#include <cstdint>
#include <deque>
#include <istream>
#include <string>

/// A line of an outline.
struct OutlineRow {
    std::string m_Label;
    uint32_t m_Level; ///< 0 for the first; at most one more than that of the row before it
};
using OutlineRows = std::deque<OutlineRow>; // taken from the front, so that memory is free for more

/// Reads an indented outline: a line that is indented deeper than the line before is its child.
/// Tabs advance to the next multiple of 8; blank lines do not count. What a failing stream still
/// gave is the outline, and a text that memory does not hold makes the stream fail. `progress`,
/// which may be null, hears how much of `size` bytes was read. Any thread may read, since no host
/// object is used.
OutlineRows ReadOutlineRows(std::istream& input, ReadProgress* progress = nullptr, size_t size = 0);

/// Makes the tree of an outline, on the thread of host objects. Throws when memory runs out.
SmartPtr<ISuperCollection> MakeOutline(OutlineRows rows);

/// Reads an outline and makes its tree.
SmartPtr<ISuperCollection> ReadOutline(std::istream& input);
