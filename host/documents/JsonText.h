#pragma once

#include "host/documents/DocumentText.h"

#include <string>

/// Goes through JSON, or JSON Lines: objects and arrays are rows under their name or index, values
/// are labels of the form `name: value`, strings among them in quotes. A text that goes wrong is
/// read up to there and ends in a row that tells the line. Throws std::bad_alloc.
DocumentTextPtr IndexJson(std::string text, const IndexOptions& options = {});
