#pragma once

#include "framework/Interfaces.h"
#include "framework/runtime/SmartPtr.h"

#include <string>

/// Whose collections hold the rows.
enum class Data {
    kInPlace, ///< the bench's own, over a plain array
    kSuper    ///< "SuperCollection"
};

enum class Shape {
    kFlat,  ///< every row below the root, every tenth an empty folder
    kNested ///< open folders of nine leaves
};

std::string NameOf(Data data);
std::string NameOf(Shape shape);

/// A tree of so many rows, of which every tenth has an icon.
SmartPtr<ISuperCollection> MakeTree(Data data, Shape shape, int32_t rows);
/// A closed folder of so many children.
SmartPtr<ISuperCollection> MakeFolder(Data data, int32_t children);
