#pragma once

/// While one lives, what runs on this thread is the host's: its calls of itself are not counted and
/// do not fail, nor do its allocations.
class HostTurn {
public:
    HostTurn() { ++s_Depth; }
    ~HostTurn() { --s_Depth; }
    HostTurn(const HostTurn&) = delete;
    HostTurn& operator=(const HostTurn&) = delete;

    static bool IsNow() { return s_Depth > 0; }

private:
    static inline thread_local int s_Depth = 0;
};
