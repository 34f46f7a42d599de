#pragma once

#include "framework/interfaces/CollectionInterfaces.h"
#include "framework/runtime/SmartPtr.h"

#include <functional>

/// Makes the tree of what was read. Reading holds no host object and may be done on any thread;
/// this is for the one that all host objects are used on.
using TreeMaker = std::function<SmartPtr<ISuperCollection>()>;
