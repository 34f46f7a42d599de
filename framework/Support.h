#pragma once

// The support library: texts, host strings and values, file names, icons and collections.

#include "framework/FileNames.h"
#include "framework/Format.h"
#include "framework/HostStrings.h"
#include "framework/Icons.h"
#include "framework/NamedCollections.h"
#include "framework/REFString.h"
#include "framework/Values.h"
#include "framework/XMLTag.h"
