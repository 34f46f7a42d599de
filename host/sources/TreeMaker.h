#pragma once

#include "framework/interfaces/CollectionInterfaces.h"
#include "framework/runtime/SmartPtr.h"
#include "host/sources/Once.h"

/// Makes the tree of what was read. Reading may be done on any thread and uses no host object; this
/// is for the one thread that all host objects are used on. Throws when memory runs out.
using TreeMaker = Once<SmartPtr<ISuperCollection>()>;
