#pragma once

#include "framework/interfaces/CollectionInterfaces.h"
#include "framework/runtime/SmartPtr.h"

#include <string>
#include <string_view>

/// Reads JSON, or JSON Lines, as a collection: objects and arrays are rows under their name or
/// index, values are labels of the form `name: value`, strings among them in quotes. A text that
/// goes wrong is read up to there, ends in a row that tells the line, and `fault` tells it too;
/// that is empty otherwise. Throws when memory runs out.
SmartPtr<ISuperCollection> ReadJson(std::string_view text, std::string& fault);
