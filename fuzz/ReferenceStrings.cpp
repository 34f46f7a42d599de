// The operations of reference strings: a text, a set of delimiters, then one operation a byte.

#include "fuzz/Input.h"

namespace {

int32_t Run(uint8_t choice, CREFString& text, CREFString* first, CREFString* second,
    const CREFString& delimiters) {
    const bool a = (choice & 0x10) != 0;
    const bool b = (choice & 0x20) != 0;
    const bool c = (choice & 0x40) != 0;
    CREFString* out = (choice & 0x80) != 0 ? nullptr : first;
    const wchar_t delimiter = delimiters.m_Length > 0 ? *delimiters.m_String : L' ';
    switch (choice & 0xF) {
    case 0:
        return text.GetLine(out, a, delimiter, b);
    case 1:
        return text.GetLineCRLF(out, a, b);
    case 2:
        return text.GetReverseLine(out, delimiter, a, b);
    case 3:
        return text.GetLineRight(out, delimiter, a, b, c);
    case 4:
        return text.Crop(out, delimiter, a, b);
    case 5:
        return text.Split(out, c ? second : nullptr, delimiters, a ? 1 : 0);
    case 6:
        return text.GetFirstWord(first, a);
    case 7:
        return text.GetWord(out, a, delimiters);
    case 8:
        return text.Contains(delimiters);
    case 9:
        return text.ContainsChar(delimiters);
    default:
        return IsEqualIgnoringCase(text, delimiters) ? S_OK : E_FAIL;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Input input(data, size);
    const auto characters = input.Text();
    const auto delimiters = input.Text();
    CREFString text = Refer(characters);
    while (!input.IsEmpty()) {
        const CREFString before = text;
        CREFString first;
        CREFString second;
        const uint8_t choice = input.Byte();
        const int32_t status = Run(choice, text, &first, &second, Refer(delimiters));
        Require(IsWithin(text, before) && IsWithin(first, before) && IsWithin(second, before));
        Require(status == E_FAIL || (status >= 0 && status <= before.m_Length + 1));
        Require(status != E_FAIL || text.m_Length == before.m_Length);
    }
    return 0;
}
