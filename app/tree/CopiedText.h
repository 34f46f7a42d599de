#pragma once

#include "framework/interfaces/TreeInterfaces.h"

#include <string>

/// What copying takes of the selected row, UTF-8; empty without one.
///
/// In a folder that is the whole path. In a document it is the value of what has nothing below it,
/// which is what stands after "name: ", or all of a label without a name. Everything else, members
/// of an archive too, has the labels from the first level down, separated by '/'.
std::string CopiedText(IUITree* tree);
