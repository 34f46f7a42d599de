#pragma once

#include "framework/Interfaces.h"
#include "framework/runtime/SmartPtr.h"

#include <string>

/// Whose collections hold the rows.
enum class Data {
    kInPlace, ///< the bench's own, over a plain array
    kSuper    ///< "SuperCollection"
};

/// Whether they vouch for what they hold, with a version.
enum class Vouched { kNo, kYes };

struct Source {
    Data m_Data;
    Vouched m_Vouched;
};

enum class Shape {
    kFlat,  ///< every row below the root, every tenth an empty folder
    kNested ///< open folders of nine leaves
};

std::string NameOf(Source source);
std::string NameOf(Shape shape);

/// A tree of so many rows, of which every tenth has an icon. What is vouched for holds for the tree
/// that was made last.
SmartPtr<ISuperCollection> MakeTree(Source source, Shape shape, int32_t rows);
/// A closed folder of so many children.
SmartPtr<ISuperCollection> MakeFolder(Source source, int32_t children);
