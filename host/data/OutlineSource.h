#pragma once

#include "framework/interfaces/CollectionInterfaces.h"
#include "framework/runtime/SmartPtr.h"

#include <istream>

/// Reads an indented outline as a collection: a line that is indented deeper than the line before
/// is its child. Tabs advance to the next multiple of 8; blank lines do not count. Throws when
/// memory runs out; what a failing stream still gave is the outline.
SmartPtr<ISuperCollection> ReadOutline(std::istream& input);
