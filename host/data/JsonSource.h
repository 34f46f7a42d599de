#pragma once

#include "framework/interfaces/CollectionInterfaces.h"
#include "framework/runtime/SmartPtr.h"
#include "host/data/DocumentText.h"
#include "host/data/Extents.h"
#include "host/data/ReadProgress.h"

#include <string>

/// Goes through JSON, or JSON Lines: objects and arrays are rows under their name or index, values
/// are labels of the form `name: value`, strings among them in quotes. A text that goes wrong is
/// read up to there and ends in a row that tells the line. `progress` may be null; `least` is that
/// of the text's Extents. Throws std::bad_alloc.
DocumentTextPtr IndexJson(
    std::string text, ReadProgress* progress = nullptr, size_t least = kLeastExtent);

/// The same as a collection; `fault` is what is wrong, or "". Throws when memory runs out.
SmartPtr<ISuperCollection> ReadJson(std::string text, std::string& fault);
