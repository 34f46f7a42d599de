#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

/// A program that runs beside the test, which reads what it writes to its standard output. It is
/// ended with the object.
class Process {
public:
    using Words = std::vector<std::string>;

    /// `environment` is added to the test's own, as NAME=VALUE. In a word of the command, "%fd"
    /// stands for the number of the descriptor that is read, for programs that write to any.
    explicit Process(Words command, const Words& environment = {});
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    /// Waits for output after what the last call found, up to the end of the line. False after half
    /// a minute, or when the program has ended without it.
    bool WaitFor(const std::string& text);
    /// Everything read so far.
    const std::string& Output() const { return m_Output; }
    /// Waits until the program ends: its exit status, or -1 after half a minute or for a signal.
    int Wait();

private:
    bool ReadMore();

    pid_t m_Id = -1;
    int m_Descriptor = -1;
    std::string m_Output;
    size_t m_Found = 0; ///< where WaitFor goes on
};
