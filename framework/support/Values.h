#pragma once

#include "framework/support/REFString.h"

// Numbers read from texts. A text that is no number gives 0; a number ends at the first character
// that does not fit; nothing is skipped in front.

/// An integer with an optional sign; a leading '#' makes it hexadecimal. Wraps around at 32 bits.
int _IS2Integer(CREFString text, int radix);
/// The same with the first and third bytes exchanged and the top one cleared: '#RRGGBB' becomes
/// 0x00BBGGRR.
int _IS2Color(CREFString text, int radix);
/// A number in fixed notation, of whose fraction 18 digits count; a leading '#' makes it a
/// hexadecimal integer. There is no exponent.
double _IS2Double(CREFString text);
