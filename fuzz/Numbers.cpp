// The readers of numbers, and what the writers of numbers wrote.

#include "framework/interfaces/Identifiers.h"
#include "framework/runtime/SmartPtr.h"
#include "framework/support/HostStrings.h"
#include "framework/support/Values.h"
#include "fuzz/Input.h"

#include <cmath>

[[maybe_unused]] static const bool gIdentifiersReady = (InitializeIdentifiers(), true);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Input input(data, size);
    const int radix = int(input.Byte()) - 0x80;
    const auto characters = input.Text();
    const CREFString text = Refer(characters);
    for (const int each : {radix, 10, 16}) {
        const int32_t value = _IS2Integer(text, each);
        const auto decimal = Adopt(ISCreate(value));
        const auto hexadecimal = Adopt(ISCreateHex(value));
        Require(_IS2Integer(CREFString(decimal.Get()), 10) == value);
        Require(_IS2Integer(CREFString(hexadecimal.Get()), 10) == value);
        Require((_IS2Color(text, each) & ~0xFFFFFF) == 0);
    }
    const double number = _IS2Double(text);
    Require(std::isfinite(number));
    const auto written = Adopt(ISCreate(number));
    constexpr double kWraps = 0x1p63;
    Require(std::abs(number) >= kWraps || std::abs(_IS2Double(CREFString(written.Get())) -
                                                   number) <= 1e-6 + std::abs(number) * 1e-12);
    return 0;
}
