#pragma once

#include "framework/interfaces/CollectionInterfaces.h"
#include "framework/runtime/SmartPtr.h"

#include <functional>

/// Makes the tree of what was read. Reading may be done on any thread and uses no object that
/// others know; this is for the one thread that all host objects are used on.
using TreeMaker = std::function<SmartPtr<ISuperCollection>()>;
