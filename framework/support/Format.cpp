#include "framework/support/Format.h"

#include <cstdarg>
#include <cwchar>

int _swprintf(wchar_t* buffer, unsigned int capacity, const wchar_t* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int count = std::vswprintf(buffer, capacity, format, arguments);
    va_end(arguments);
    if (capacity > 0) {
        buffer[count < 0 ? 0 : count] = L'\0';
    }
    return count;
}
