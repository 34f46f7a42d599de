#pragma once

#include "host/documents/DocumentText.h"

#include <string>

/// Goes through XML: elements are rows under their name, their attributes come first below them as
/// `@name: value`, an element that holds nothing but text is one label `name: text`. Blanks and
/// breaks within a text count as one blank; comments and instructions are left out, and so is
/// everything outside the text: nothing that it refers to is opened. A text that goes wrong is read
/// up to there and ends in a row that tells the line. Throws std::bad_alloc.
DocumentTextPtr IndexXml(std::string text, const IndexOptions& options = {});
