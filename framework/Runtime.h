#pragma once

// The component runtime: what a component of the framework is built on.

#include "framework/Components.h"
#include "framework/EventSource.h"
#include "framework/FireEvents.h"
#include "framework/Guarded.h"
#include "framework/Identifiers.h"
#include "framework/Object.h"
#include "framework/ObjectInfo.h"
#include "framework/PropInterrogate.h"
#include "framework/QueryItem.h"
#include "framework/ResourceLock.h"
#include "framework/SmartPtr.h"
#include "framework/Unknown.h"
