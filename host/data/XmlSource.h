#pragma once

#include "framework/interfaces/CollectionInterfaces.h"
#include "framework/runtime/SmartPtr.h"

#include <string>
#include <string_view>

/// Reads XML as a collection: elements are rows under their name, their attributes come first below
/// them as `@name: value`, an element that holds nothing but text is one label `name: text`. Blanks
/// and breaks within a text count as one blank; comments and instructions are left out, and so is
/// everything outside the text: nothing that it refers to is opened. A text that goes wrong is read
/// up to there, ends in a row that tells the line, and `fault` tells it too; that is empty
/// otherwise. Throws when memory runs out.
SmartPtr<ISuperCollection> ReadXml(std::string_view text, std::string& fault);
