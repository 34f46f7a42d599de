#pragma once

#include "app/input/Input.h"
#include "framework/interfaces/TreeInterfaces.h"

// What the host does with the control when a key is pressed or a row is double-clicked, by the
// control's public operations and the flag words of the data. The control itself hears no keys.
//
// `rowsShown` is the number of rows that the control's rectangle has room for, at least 1.

/// Up, down, page-up, page-down, home and end select a row and bring it into view; right opens a
/// folder or goes to its first child; left closes a folder or goes to its parent; enter opens or
/// closes a folder. Without a selection the first row shown is selected. S_FALSE when the key has
/// nothing to do.
int32_t PressKey(IUITree* tree, Key key, int32_t rowsShown);

/// Makes a row the only selected one and brings it into view. S_FALSE when there is no such row.
int32_t GoToRow(IUITree* tree, int32_t row, int32_t rowsShown);

/// Opens or closes a row. S_FALSE for a leaf.
int32_t ToggleRow(IUITree* tree, int32_t row);
