#pragma once

#include <cstdint>
#include <cstring>

// The binary contract as a host sees it that has none of our headers: written from the contract,
// and shared with nothing. Operations that this host does not call have no names.

namespace foreign {

struct Identifier {
    uint8_t bytes[16];
};
struct Text {
    int32_t length;
    const wchar_t* characters;
};
struct Rect {
    int32_t left, top, width, height;
};
struct Canvas {
    void* context;
};

/// An interface's identifier: five bits a character, low ones first.
inline Identifier Derive(const char* name) {
    Identifier result = {};
    for (unsigned i = 0; name[i] != 0 && i < 25; ++i) {
        const char c = name[i];
        const unsigned code = c >= 'A' && c <= 'Z' ? c - 64 : c >= 'a' && c <= 'z' ? c - 96 : 27;
        for (unsigned bit = 0; bit < 5; ++bit) {
            const unsigned place = 5 * i + bit;
            result.bytes[place / 8] |= static_cast<uint8_t>((code >> bit & 1) << place % 8);
        }
    }
    return result;
}

struct Object {
    virtual int32_t Query(const Identifier& identifier, void** object) = 0;
    virtual int32_t Retain() = 0;
    virtual int32_t Drop() = 0;
};

struct Collection : Object { // ISuperCollection
    virtual int32_t Count(int32_t* count) = 0;
    virtual int32_t Item(int32_t index, Object** item) = 0;
    virtual int32_t Name(int32_t index, Object** name) = 0;
    virtual int32_t Data(int32_t index, Object** data) = 0;
    virtual int32_t Flags(int32_t index, int32_t* flags) = 0;
    virtual int32_t SetFlags(int32_t index, int32_t flags) = 0;
    virtual int32_t Add(Object*, Object*, Object*, int32_t) = 0;
    virtual int32_t Insert(int32_t, int32_t, Object*, int32_t, int32_t) = 0;
    virtual int32_t Clear() = 0;
};

struct Tree : Object { // IUITree
    virtual int32_t Node(int32_t, int32_t row, int32_t, Object** node) = 0;
    virtual int32_t _1() = 0;
    virtual int32_t HitTest(int32_t x, int32_t y, Rect* rect, Object** node) = 0;
    virtual int32_t _3() = 0;
    virtual int32_t _4() = 0;
    virtual int32_t SetElementSize(int32_t width, int32_t height) = 0;
    virtual int32_t ElementSize(int32_t* width, int32_t* height) = 0;
    virtual int32_t Size(int32_t* columns, int32_t* rows, int32_t* layers) = 0;
    virtual int32_t _8() = 0;
    virtual int32_t _9() = 0;
    virtual int32_t Bound(Object** collection) = 0;
    virtual int32_t Bind(Object* collection) = 0;
    virtual int32_t _12() = 0;
    virtual int32_t _13() = 0;
    virtual int32_t Select(int32_t row, int32_t flags) = 0;
    virtual int32_t Selected(int32_t index, int32_t kind, Object** result) = 0;
};

struct Mouse : Object { // IUIMouseInput
    virtual int32_t Pointer(int32_t state, int32_t action, int32_t keys, double x, double y,
        Rect* rect, Object* context) = 0;
};
struct Touch : Object { // IUITouchInput
    virtual int32_t Update(double, double, Rect*, double phase, double, double, double, double,
        double, double pan, double, double) = 0;
};
struct Drawable : Object { // IRenderableObject
    virtual int32_t Render(Canvas* canvas, Rect* rect, Object* context, int32_t param) = 0;
};
struct Properties : Object { // IUIPropInterrogate
    virtual int32_t Inquire(int32_t id, int32_t* value) = 0;
    virtual int32_t Control(int32_t id, int32_t value) = 0;
};

using Creator = int32_t (*)(void* outer, Identifier* identifier, void** object);
using Factory = int32_t (*)(Text name, void** creator);
using Initialize = int32_t (*)(void* module, Object* components);

} // namespace foreign
