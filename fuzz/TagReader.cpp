// The tag reader: a tag, then a text, which is read to its end.

#include "framework/support/XMLTag.h"
#include "fuzz/Input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Input input(data, size);
    const auto tagText = input.Text();
    const auto wholeText = input.Text();
    CREFString tag = Refer(tagText);
    const CREFString whole = Refer(wholeText);
    for (CREFString text = whole;;) {
        const CREFString before = text;
        CREFString attributes;
        CREFString content;
        const int32_t status = XMLGetTAGGED(text, tag, attributes, content, 0);
        Require(IsEqual(text, before) && text.m_String == before.m_String);
        Require(XMLGetTAGGED(text, tag, attributes, content, 1) == status);
        Require(IsWithin(attributes, before) && IsWithin(content, before));
        if (status != S_OK) {
            Require(status == E_FAIL && text.m_String == before.m_String);
            return 0;
        }
        Require(IsWithin(text, before) && text.m_Length < before.m_Length);
    }
}
