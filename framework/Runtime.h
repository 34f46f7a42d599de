#pragma once

// The component runtime: what a component of the framework is built on.

#include "framework/interfaces/Identifiers.h"
#include "framework/interfaces/ObjectInfo.h"
#include "framework/interfaces/Unknown.h"
#include "framework/runtime/Components.h"
#include "framework/runtime/EventSource.h"
#include "framework/runtime/FireEvents.h"
#include "framework/runtime/Guarded.h"
#include "framework/runtime/Object.h"
#include "framework/runtime/QueryItem.h"
#include "framework/runtime/ResourceLock.h"
#include "framework/runtime/SmartPtr.h"
#include "framework/settings/PropInterrogate.h"
