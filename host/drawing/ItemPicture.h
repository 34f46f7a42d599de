#pragma once

#include "framework/interfaces/Types.h"

/// What an item is, for its picture.
enum class ItemKind : uint8_t {
    kFolder,
    kFile,
    kText,
    kImage,
    kProgram,

    // In documents.
    kObject,
    kList,
    kElement,
    kAttribute,
    kString,
    kNumber,
    kTrue,
    kFalse,
    kNull,
    kFault ///< what is said where one breaks off
};

struct ItemLook {
    ItemKind m_Kind = ItemKind::kFile;
    bool m_IsLink = false; ///< an arrow says so

    bool operator==(const ItemLook&) const = default;
};

/// Draws an item in the middle of a rectangle of whole pixels, with lines in the pixels of whatever
/// scale the canvas has, in colours that stand out on light and dark paper. Nothing below 6 pixels,
/// where a picture is a blot.
void DrawItemPicture(UbuntuCanvas* canvas, const CANVASRect* rect, ItemLook look);
