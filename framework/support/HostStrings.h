#pragma once

#include "framework/support/REFString.h"

// New host strings. Each carries one reference for the caller, and is null when the host cannot
// make strings.

/// The text; null is the empty one.
[[nodiscard]] ICreatableString* ISCreate(const wchar_t* text);
[[nodiscard]] ICreatableString* ISCreate(const tagREFString& text);
/// Decimal text.
[[nodiscard]] ICreatableString* ISCreate(int32_t value);
/// Fixed notation with six decimals.
[[nodiscard]] ICreatableString* ISCreate(double value);
/// Colour text: '#' and upper-case hexadecimal digits, at least six of them.
[[nodiscard]] ICreatableString* ISCreateHex(int32_t value);
/// A component name from a narrow literal, converted and appended character by character.
[[nodiscard]] ICreatableString* ISCreateName(const char* name);
