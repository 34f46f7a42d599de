#pragma once

/// Formats into a buffer of `capacity` characters and terminates it. Returns the count of
/// characters without the terminator; when the text does not fit, a negative number and the empty
/// text.
int _swprintf(wchar_t* buffer, unsigned int capacity, const wchar_t* format, ...);
