#include "tests/host/Process.h"

#include <csignal>
#include <cstdlib>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int kPatience = 30'000; // milliseconds

[[noreturn]] void Become(const Process::Words& command, const Process::Words& environment) {
    prctl(PR_SET_PDEATHSIG, SIGKILL); // the test may be ended from outside
    for (const std::string& variable : environment) {
        putenv(const_cast<char*>(variable.c_str()));
    }
    std::vector<char*> words;
    for (const std::string& word : command) {
        words.push_back(const_cast<char*>(word.c_str()));
    }
    words.push_back(nullptr);
    execvp(words[0], words.data());
    _exit(127);
}

} // namespace

Process::Process(Words command, const Words& environment) {
    int ends[2];
    if (pipe(ends) != 0) {
        return;
    }
    for (std::string& word : command) {
        if (word == "%fd") {
            word = std::to_string(STDOUT_FILENO);
        }
    }
    m_Id = fork();
    if (m_Id == 0) {
        dup2(ends[1], STDOUT_FILENO);
        close(ends[0]);
        close(ends[1]);
        Become(command, environment);
    }
    close(ends[1]);
    m_Descriptor = ends[0];
}

Process::~Process() {
    if (m_Id > 0) {
        kill(m_Id, SIGKILL);
        waitpid(m_Id, nullptr, 0);
    }
    close(m_Descriptor);
}

bool Process::ReadMore() {
    pollfd ready{m_Descriptor, POLLIN, 0};
    char buffer[4096];
    const ssize_t count =
        poll(&ready, 1, kPatience) == 1 ? read(m_Descriptor, buffer, sizeof(buffer)) : 0;
    m_Output.append(buffer, count > 0 ? static_cast<size_t>(count) : 0);
    return count > 0;
}

bool Process::WaitFor(const std::string& text) {
    for (;;) {
        const size_t start = m_Output.find(text, m_Found);
        const size_t end = start == std::string::npos ? start : m_Output.find('\n', start);
        if (end != std::string::npos) {
            m_Found = end + 1;
            return true;
        }
        if (!ReadMore()) {
            return false;
        }
    }
}

int Process::Wait() {
    while (ReadMore()) {
    }
    pollfd ready{m_Descriptor, POLLIN, 0}; // at its end by now, or still silent
    int status = -1;
    const bool isEnded = poll(&ready, 1, 0) == 1 && waitpid(m_Id, &status, 0) == m_Id;
    m_Id = isEnded ? -1 : m_Id;
    return isEnded && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
