#include "framework/interfaces/Identifiers.h"

#include <algorithm>
#include <cstring>

const IID IID_NULL = {};
const IID IID_IUnknown = {{0x00000000, 0x00000000, 0x000000C0, 0x46000000}};

#define DEFINE_IDENTIFIER(name) IID IID_##name;
FRAMEWORK_INTERFACE_NAMES(DEFINE_IDENTIFIER)
#undef DEFINE_IDENTIFIER

namespace {

constexpr size_t kMaxCharacters = 25;
constexpr size_t kBitsPerCharacter = 5;

uint32_t CodeOf(unsigned char character) {
    if (character >= 'A' && character <= 'Z') {
        return character - 'A' + 1U;
    }
    if (character >= 'a' && character <= 'z') {
        return character - 'a' + 1U;
    }
    if (character >= '0' && character <= '4') {
        return character - '0' + 28U; // the 4 needs a sixth bit, shared with the next character
    }
    return 27;
}

} // namespace

IID __IIDOfc(const char* name) {
    IID identifier = {};
    const size_t used = std::min(std::strlen(name), kMaxCharacters);
    for (size_t i = 0; i < used; ++i) {
        const size_t bit = i * kBitsPerCharacter;
        const uint64_t code = uint64_t{CodeOf(static_cast<unsigned char>(name[i]))} << (bit % 32);
        identifier.m_Words[bit / 32] |= static_cast<uint32_t>(code);
        if (const auto carried = static_cast<uint32_t>(code >> 32); carried != 0) {
            identifier.m_Words[bit / 32 + 1] |= carried;
        }
    }
    return identifier;
}

void InitializeIdentifiers() {
#define DERIVE_IDENTIFIER(name) IID_##name = __IIDOfc(#name);
    FRAMEWORK_INTERFACE_NAMES(DERIVE_IDENTIFIER)
#undef DERIVE_IDENTIFIER
}
