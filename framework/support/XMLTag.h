#pragma once

#include "framework/support/REFString.h"

class XMLIndex;

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

/// The same for one who reads all elements of a text, of which `text` is what is left, by the tags
/// that XMLFindTag finds: looks in the text's index before it searches.
int32_t XMLGetTAGGED(CREFString& text, CREFString& tag, CREFString& attributes, CREFString& content,
    short advance, XMLIndex& index);

/// The first word of a tag.
tagREFString XMLNameOf(const tagREFString& tag);

/// An opening tag in a text.
struct XMLFoundTag {
    const wchar_t* m_Start = nullptr; ///< its '<'
    CREFString m_Text; ///< what stands before its '>', without blanks and control characters around
    CREFString m_Rest; ///< what follows it
};

/// Finds the first opening tag, which is `tag` as long as that is of the same text and still ahead.
/// False when there is none, and `tag` stays.
bool XMLFindTag(const CREFString& text, XMLFoundTag& tag);
