#include "host/drawing/UIDefault.h"

#include "framework/settings/ParameterTable.h"
#include "host/drawing/Defaults.h"

int32_t UIDefault::Inquire(int32_t id, int32_t* value) {
    if (id != UIDEFAULT_ROWHEIGHT && id != UIDEFAULT_TEXTSIZE) {
        return E_INVALIDARG;
    }
    if (value) {
        *value = id == UIDEFAULT_ROWHEIGHT ? kDefaultRowHeight : kDefaultTextSize;
    }
    return static_cast<int32_t>(PROPTYPE_LONG);
}

int32_t UIDefault::Control(int32_t /*id*/, int32_t /*value*/) {
    return E_INVALIDARG;
}

int32_t UIDefault::ParameterRange(int32_t id, int32_t* minimum, int32_t* maximum) {
    if (minimum) {
        *minimum = 0;
    }
    if (maximum) {
        *maximum = 0;
    }
    return Inquire(id, nullptr) < 0 ? E_INVALIDARG : S_OK;
}

int32_t UIDefault::ParameterEnumeration(int32_t /*id*/, IUnknown** enumeration) {
    if (enumeration) {
        *enumeration = nullptr;
    }
    return E_INVALIDARG;
}
