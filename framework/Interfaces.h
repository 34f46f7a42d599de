#pragma once

// Every interface of the framework that modules and hosts meet through.

#include "framework/interfaces/CollectionInterfaces.h"
#include "framework/interfaces/CollectionVersion.h"
#include "framework/interfaces/ComponentInterfaces.h"
#include "framework/interfaces/DrawingInterfaces.h"
#include "framework/interfaces/EventInterfaces.h"
#include "framework/interfaces/FileInterfaces.h"
#include "framework/interfaces/InputInterfaces.h"
#include "framework/interfaces/ObjectInfo.h"
#include "framework/interfaces/PropertyInterfaces.h"
#include "framework/interfaces/StreamInterfaces.h"
#include "framework/interfaces/TextInterfaces.h"
#include "framework/interfaces/TreeInterfaces.h"
#include "framework/interfaces/TreeProperties.h"
