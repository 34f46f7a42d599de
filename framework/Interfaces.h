#pragma once

// Every interface of the framework that modules and hosts meet through.

#include "framework/CollectionInterfaces.h"
#include "framework/ComponentInterfaces.h"
#include "framework/DrawingInterfaces.h"
#include "framework/EventInterfaces.h"
#include "framework/FileInterfaces.h"
#include "framework/InputInterfaces.h"
#include "framework/ObjectInfo.h"
#include "framework/PropertyInterfaces.h"
#include "framework/StreamInterfaces.h"
#include "framework/TextInterfaces.h"
#include "framework/TreeInterfaces.h"
