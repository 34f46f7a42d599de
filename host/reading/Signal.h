#pragma once

#include "host/reading/Descriptor.h"

#include <sys/eventfd.h>

/// A descriptor that is readable from the time it is set until it is cleared, for a thread that
/// waits for several. Any thread may use it.
class Signal {
public:
    /// Throws std::system_error.
    Signal() : m_Event(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK), "make a signal") {}

    int Get() const { return m_Event.Get(); }
    void Set() { eventfd_write(Get(), 1); }
    void Clear() {
        eventfd_t unused = 0;
        eventfd_read(Get(), &unused);
    }

private:
    Descriptor m_Event;
};
