#pragma once

#include "framework/interfaces/TextInterfaces.h"

#include <string_view>

/// A string reference with parsing operations. They cut lines, words and tokens off the referenced
/// text without copying: they move this reference, or make `out` refer into the same characters. No
/// operation reads a character at or past the length, and a failing one leaves this reference as it
/// was.
///
/// Common arguments: `out` may be null unless said otherwise and must not be the reference itself;
/// `remove` advances the reference past what was taken (or shortens it, where the operation works
/// from the end); a `drop` flag leaves the delimiter out of `out`. Results are S_OK, S_FALSE
/// (taken, and nothing is left) or E_FAIL, except where a position is returned.
class CREFString : public tagREFString {
public:
    CREFString() : tagREFString{0, nullptr} {}
    CREFString(tagREFString text) : tagREFString(text) {} // NOLINT(google-explicit-constructor)
    /// Refers to a zero-terminated text; null is the empty one.
    explicit CREFString(const wchar_t* text);
    /// Refers to a host string's characters; null is the empty text.
    explicit CREFString(IString* text);

    /// First line up to and with `delimiter`. Without `remove` E_FAIL says that nothing follows it.
    virtual int32_t GetLine(CREFString* out, bool remove, wchar_t delimiter, bool dropDelimiter);
    /// First line up to a line break; CR LF and LF CR are one break, two equal ones are two.
    virtual int32_t GetLineCRLF(CREFString* out, bool dropBreak, bool remove);
    /// The text before the last delimiter. E_FAIL when that is missing or the first character.
    virtual int32_t GetReverseLine(
        CREFString* out, wchar_t delimiter, bool remove, bool skipDelimiter);
    /// The text from the last delimiter on; with `wholeIfMissing` all of it when there is none.
    virtual int32_t GetLineRight(
        CREFString* out, wchar_t delimiter, bool remove, bool dropDelimiter, bool wholeIfMissing);
    /// GetLineRight for a delimiter that must be there.
    virtual int32_t Crop(CREFString* out, wchar_t delimiter, bool remove, bool dropDelimiter);
    /// Cuts before the first character of a set (with `controlsDelimit` also before a control
    /// character); E_FAIL and everything in `first` when there is none. An empty set never matches.
    virtual int32_t Split(
        CREFString* first, CREFString* rest, CREFString delimiters, int32_t controlsDelimit);
    /// First token: a quoted word, a number, an identifier or one punctuation character. `out` is
    /// required.
    virtual int32_t GetFirstWord(CREFString* out, bool remove);
    /// First word up to any delimiter of the set. Returns the delimiter's position plus 1, or 0
    /// when there is none and the whole text is the word.
    virtual int32_t GetWord(CREFString* out, bool remove, tagREFString delimiters);
    /// The position of a text, found in one pass: a mismatch is not tried as a new start.
    virtual int32_t Contains(tagREFString text);
    /// The position of the first character that is in the set.
    virtual int32_t ContainsChar(tagREFString characters);

    /// A new, empty host string, or a new host variant, with one reference for the caller; null
    /// when the host's component is missing.
    [[nodiscard]] static ICreatableString* CreateString();
    [[nodiscard]] static IVariant* CreateVariant();

private:
    int32_t Advance(int32_t count);
    int32_t TakeRight(CREFString* out, wchar_t delimiter, bool remove, bool dropDelimiter);
};

static_assert(sizeof(CREFString) == 3 * sizeof(void*), "the table pointer, then the two words");

/// The characters of a reference, for as long as they live; a negative length counts as 0.
std::wstring_view ViewOf(const tagREFString& text);

/// Whether two references hold the same characters.
bool IsEqual(tagREFString first, tagREFString second);
/// The same without regard to case.
bool IsEqualIgnoringCase(tagREFString first, tagREFString second);
