#pragma once

#include <stdexcept>

/// A wrong argument that only shows once the input is there.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};
