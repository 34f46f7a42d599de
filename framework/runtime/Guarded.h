#pragma once

#include "framework/interfaces/Types.h"

/// Runs the body of an operation that may allocate. No exception crosses an interface: when memory
/// runs out (or a host object throws) the operation answers E_FAIL.
template <class Body>
int32_t Guarded(Body&& body) noexcept {
    try {
        return body();
    } catch (...) {
        return E_FAIL;
    }
}
