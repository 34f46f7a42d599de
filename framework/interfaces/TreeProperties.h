#pragma once

#include <cstdint>

/// Numbers of the tree control's parameters. Colours are 0xRRGGBB.
constexpr int32_t PROP_ELEMENTHEIGHT = 4; ///< pixels of a row
constexpr int32_t PROP_TEXTCOLOR = 100;
constexpr int32_t PROP_COLOR101 = 101; ///< kept for the host, like the next; not drawn with
constexpr int32_t PROP_COLOR102 = 102;
constexpr int32_t PROP_RESERVED104 = 104;
constexpr int32_t PROP_USEDEFAULTSTYLE = 105; ///< binding takes the row height from "UIDefault"
constexpr int32_t PROP_SCROLLPOS = 115;       ///< the row at the top
constexpr int32_t PROP_RESERVED116 = 116;
constexpr int32_t PROP_OPTIONS = 136;
constexpr int32_t PROP_SELECTONPRESS = 145;
constexpr int32_t PROP_CLEARALLONSELECT = 146;
constexpr int32_t PROP_ROOTTOGGLEONICONONLY = 147;
constexpr int32_t PROP_CHILDTOGGLEONICONONLY = 148;
constexpr int32_t PROP_OPENICON = 170; ///< an object that answers IRenderableObject
constexpr int32_t PROP_CLOSEDICON = 171;
constexpr int32_t PROP_RESETICONS = 172;

/// Bits of PROP_OPTIONS.
constexpr int32_t OPTION_REPORTDATA = 1;  ///< a click on a collection row reports its data object
constexpr int32_t OPTION_FILLONPRESS = 2; ///< a press lets lazily filled items fill themselves
