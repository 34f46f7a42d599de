#pragma once

#include "framework/support/REFString.h"

/// Finds the first element of a text whose name begins with the first word of `tag` (what stands
/// between `<` and `>`), and hands out references into the text: `attributes` is what stands
/// between the name and the end of the opening tag, `content` what stands before the closing tag,
/// empty when that is missing. Nothing is decoded, and an element inside one of its own name ends
/// it. With `advance` the text is moved past the element, or past the opening tag when nothing
/// closes it.
///
/// S_OK when the opening tag was found, else E_FAIL: `content` is the whole text then, the text and
/// `attributes` stay. The references must be four different ones.
int32_t XMLGetTAGGED(
    CREFString& text, CREFString& tag, CREFString& attributes, CREFString& content, short advance);
