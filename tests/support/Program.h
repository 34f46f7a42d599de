#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

/// A program that runs beside the test, which reads what it writes line by line. It is waited for
/// at the end, and ends with the test where that is ended for taking too long.
class Program {
public:
    explicit Program(const std::string& command)
        : m_Output(popen(("exec setpriv --pdeathsig KILL " + command).c_str(), "r")) {}
    ~Program() { Wait(); }
    Program(const Program&) = delete;

    /// The next line with its end, or "" when there is none.
    std::string ReadLine() {
        char line[1000] = "";
        return m_Output && fgets(line, sizeof(line), m_Output) ? line : "";
    }
    /// Reads on up to a line that contains the text; false when none does.
    bool WaitFor(const std::string& text) {
        std::string line = ReadLine();
        while (!line.empty() && line.find(text) == std::string::npos) {
            line = ReadLine();
        }
        return !line.empty();
    }
    /// Waits until the program ends: its exit status, or -1.
    int Wait() {
        while (!ReadLine().empty()) {
        }
        const int status = m_Output ? pclose(std::exchange(m_Output, nullptr)) : -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    FILE* m_Output;
};

/// Starts a display that nobody sees, for the programs that the test starts after it. It ends when
/// nobody uses it any more. A key that is held long, because the machine is busy, is not repeated.
inline bool OpenDisplay(std::optional<Program>& server) {
    server.emplace("Xvfb -r -displayfd 1 -screen 0 640x480x24 -nolisten tcp -terminate");
    const std::string number = server->ReadLine();
    setenv("DISPLAY", (':' + number.substr(0, number.find('\n'))).c_str(), 1);
    return !number.empty();
}

/// Moves the pointer or presses something there.
inline void Do(const std::string& action) {
    EXPECT_EQ(std::system(("xdotool " + action).c_str()), 0) << action;
}
