#pragma once

#include "framework/interfaces/Unknown.h"

// The host's strings, variants and string tables: implemented by the host, called by modules.

struct IString : IUnknown {
    /// The characters stay the string's: valid while it lives and is not changed, and not
    /// necessarily zero-terminated.
    virtual int32_t GetString(wchar_t** text, int32_t* length) = 0;
};

struct ICreatableString : IString {
    /// Replaces the text by a copy of the referenced characters.
    virtual int32_t SetString(tagREFString text) = 0;
    /// Appends a copy of the referenced characters.
    virtual int32_t AppendString(tagREFString text) = 0;
};

struct IVariant : IUnknown {
    virtual double GetDouble() = 0;
    virtual int32_t SetLong(int32_t value) = 0;
    virtual int32_t SetDouble(double value) = 0;
};

struct IStringTable : IUnknown {
    /// The string table of the named component; null when there is none.
    virtual int32_t GetTable(IString* component, INamedCollection** table) = 0;
};
