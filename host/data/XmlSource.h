#pragma once

#include "framework/interfaces/CollectionInterfaces.h"
#include "framework/runtime/SmartPtr.h"
#include "host/data/DocumentText.h"
#include "host/data/Extents.h"
#include "host/data/ReadProgress.h"

#include <string>

/// Goes through XML: elements are rows under their name, their attributes come first below them as
/// `@name: value`, an element that holds nothing but text is one label `name: text`. Blanks and
/// breaks within a text count as one blank; comments and instructions are left out, and so is
/// everything outside the text: nothing that it refers to is opened. A text that goes wrong is read
/// up to there and ends in a row that tells the line. `progress` may be null; `least` is that of
/// the text's Extents. Throws std::bad_alloc.
DocumentTextPtr IndexXml(
    std::string text, ReadProgress* progress = nullptr, size_t least = kLeastExtent);

/// The same as a collection; `fault` is what is wrong, or "". Throws when memory runs out.
SmartPtr<ISuperCollection> ReadXml(std::string text, std::string& fault);
