#pragma once

// The support library: texts, host strings and values, file names, icons and collections.

#include "framework/support/FileNames.h"
#include "framework/support/Format.h"
#include "framework/support/HostStrings.h"
#include "framework/support/Icons.h"
#include "framework/support/NamedCollections.h"
#include "framework/support/REFString.h"
#include "framework/support/Values.h"
#include "framework/support/XMLTag.h"
