#pragma once

#include "host/reading/Signal.h"

#include <cstdint>
#include <thread>

union SDL_Event;

/// Wakes the window's loop when a descriptor has something to read, by an event among the window
/// system's: once, until it is armed again. A thread waits for it, and costs nothing meanwhile.
class Waker {
public:
    /// `descriptor` outlives it; nothing wakes for a negative one. SDL is started. Throws
    /// std::system_error.
    explicit Waker(int descriptor);
    ~Waker();
    Waker(const Waker&) = delete;
    Waker& operator=(const Waker&) = delete;

    bool IsFrom(const SDL_Event& event) const;
    /// To be called when what was there to read has been read.
    void Arm();

private:
    void Control(int operation, int descriptor);
    void Run();

    int m_Descriptor;
    Descriptor m_Poll;
    Signal m_Stop; ///< set when the thread is to end
    uint32_t m_EventType;
    std::thread m_Thread;
};
