#pragma once

#include <cerrno>
#include <system_error>
#include <unistd.h>

/// Takes what a call of the system returned: a number, or negative for a failure, which is thrown
/// as std::system_error. `what` was to be done, for users.
inline int CheckCall(int result, const char* what) {
    if (result < 0) {
        throw std::system_error(errno, std::generic_category(), what);
    }
    return result;
}

/// A descriptor of the system, closed with the object.
class Descriptor {
public:
    /// Throws std::system_error for a negative number, the result of a call that failed. `what` was
    /// to be done, for users.
    Descriptor(int number, const char* what) : m_Number(CheckCall(number, what)) {}
    ~Descriptor() { close(m_Number); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int Get() const { return m_Number; }

private:
    int m_Number;
};
