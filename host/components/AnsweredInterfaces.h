#pragma once

#include "framework/interfaces/Unknown.h"

#include <map>
#include <string>

/// The framework's interfaces that an object answers, by name; `IUnknown` among them.
std::map<std::string, IID> InterfacesOf(IUnknown* object);
