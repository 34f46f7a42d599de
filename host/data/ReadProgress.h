#pragma once

#include <cstddef>

/// Hears how far a reading is, on the thread that reads.
class ReadProgress {
public:
    virtual ~ReadProgress() = default;

    /// `done` of `whole` is read, in bytes; `whole` is 0 where nobody knows. Answers whether to go
    /// on: what was read until then is the result else.
    virtual bool Advance(size_t done, size_t whole) = 0;
};
