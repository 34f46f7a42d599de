#pragma once

#include "framework/interfaces/Unknown.h"

// The interfaces of the tree control beside drawing, input, events and properties.

/// Where Insert would place a node; accepted and not acted on.
enum InsertAtConstants : int32_t {};
enum TrimFlags : int32_t {};
enum ScrollFlags : int32_t {};

/// Bits of SelectNode's flags.
constexpr int32_t SELECT_ABSOLUTE = 1; ///< the row is counted from the first, not from the top one
constexpr int32_t SELECT_CURRENT = 2;  ///< make the node the selection and fire NodeSelect
constexpr int32_t SELECT_SCROLL = 4;   ///< the row becomes the scroll position
constexpr int32_t SELECT_UNMARKED = 8; ///< leave the nodes' selected bits alone

/// Kinds of GetSelected.
constexpr int32_t SELECTED_NODE = 0;
constexpr int32_t SELECTED_DATA = 1;
constexpr int32_t SELECTED_COLLECTION = 2;

/// The flag word that a collection keeps per item, as the control uses it.
constexpr int32_t NODE_LEVEL_MASK = 0xFF; ///< 1 for items of the bound collection
constexpr int32_t NODE_VISIBLE = 0x100;
constexpr int32_t NODE_EXPANDED = 0x200;
constexpr int32_t NODE_SELECTED = 0x400;

/// Rows are numbered from 0 in display order. Nodes handed out carry one reference.
struct IUINodeContainer : IUnknown {
    virtual int32_t get_Node(int32_t, int32_t row, int32_t, IUnknown** node) = 0;
    /// Inserts at the row; a negative row, or one that does not exist, appends to the bound
    /// collection.
    virtual int32_t put_Node(int32_t, int32_t row, int32_t, IUnknown* node) = 0;
    /// The node under a point, in canvas pixels; `rect` is the control's.
    virtual int32_t HitTest(int32_t x, int32_t y, CANVASRect* rect, IUnknown** node) = 0;
    virtual int32_t Clear() = 0;
    virtual int32_t Insert(IUnknown* reference, IUnknown* node, InsertAtConstants at,
        TrimFlags trim, ScrollFlags scroll) = 0;
    /// Sizes are in pixels; the width is not used, and answered as 0.
    virtual int32_t SetElementSize(int32_t width, int32_t height) = 0;
    virtual int32_t GetElementSize(int32_t* width, int32_t* height) = 0;
    virtual int32_t GetContainerSize(int32_t* columns, int32_t* rows, int32_t* layers) = 0;
    virtual int32_t Control(int32_t id, int32_t value) = 0;
    virtual int32_t Inquire(int32_t id, int32_t* value) = 0;
};

struct IUITree : IUINodeContainer {
    virtual int32_t get_Collection(IUnknown** collection) = 0;
    virtual int32_t put_Collection(IUnknown* collection) = 0;
    /// Closes the whole tree down to the items of the bound collection.
    virtual int32_t CompactNodes() = 0;
    /// Opens the node at the index of `collection`, filling it first when it fills lazily.
    virtual int32_t MakeNodeVisible(IUnknown* collection, int32_t index) = 0;
    virtual int32_t SelectNode(int32_t row, int32_t flags) = 0;
    /// Index -1 is the selected one. For SELECTED_COLLECTION the result is the selected index.
    virtual int32_t GetSelected(int32_t index, int32_t kind, IUnknown** result) = 0;
};

struct IParent : IUnknown {
    virtual int32_t get_Parent(IUnknown** parent) = 0;
    /// The parent is held with a reference until it is replaced.
    virtual int32_t put_Parent(IUnknown* parent) = 0;
};

struct IUIRefreshableObject : IUnknown {
    /// Tells the listeners that the object changed. The argument is not used.
    virtual int32_t Refresh(int32_t) = 0;
};
