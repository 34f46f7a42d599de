#pragma once

#include "framework/interfaces/FileInterfaces.h"

/// What GetContentState answers of an object that is filled as a whole.
inline int32_t AnswerContentState(bool isFilled, int32_t selector, int32_t* value) {
    if (!value) {
        return E_POINTER;
    }
    *value = selector == CONTENTSTATE_ARCHIVE && isFilled ? 1 : 0;
    return selector == CONTENTSTATE_ARCHIVE ? S_OK : E_INVALIDARG;
}
