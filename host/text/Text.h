#pragma once

#include "framework/support/REFString.h"

#include <string>
#include <string_view>

// Texts are wide characters, one per code point, towards the framework, and UTF-8 inside the host
// and towards the system. What is ill-formed on either side becomes U+FFFD, the replacement
// character.

std::wstring ToWide(std::string_view utf8);
std::string ToUtf8(tagREFString text);
/// UTF-8 fit to be shown on one line: control characters are replaced too.
std::string ToPrintable(tagREFString text);

std::wstring Lowered(std::wstring_view text);

/// A reference to the characters of `text`, which must outlive it.
tagREFString Refer(std::wstring_view text);
