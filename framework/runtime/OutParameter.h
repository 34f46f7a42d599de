#pragma once

/// Sets an out-parameter that the caller may have left out.
template <class T>
void Store(T* out, T value) {
    if (out) {
        *out = value;
    }
}
