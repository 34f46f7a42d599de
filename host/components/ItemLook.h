#pragma once

#include <cstdint>

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
