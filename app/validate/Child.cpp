#include "app/validate/Child.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <memory>
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

// A child process, what it tells through a pipe, and how it ends.

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kTurn = 20; ///< milliseconds between two looks whether the child has ended
constexpr size_t kMostOutput = 4096;
constexpr char kEnd = '.'; ///< told when the body came to its end

using FilePtr = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

[[noreturn]] void Fail(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

struct Pipe {
    Pipe() {
        if (pipe(m_Ends) != 0) {
            Fail("cannot make a pipe");
        }
    }
    ~Pipe() {
        close(m_Ends[0]);
        CloseWriting();
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    void CloseWriting() {
        if (m_Ends[1] >= 0) {
            close(std::exchange(m_Ends[1], -1));
        }
    }
    int m_Ends[2] = {-1, -1};
};

/// A text that parent and child share.
class SharedText {
public:
    SharedText()
        : m_Text(mmap(nullptr, kSize, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)) {
        if (m_Text == MAP_FAILED) {
            Fail("cannot share memory");
        }
    }
    ~SharedText() { munmap(m_Text, kSize); }
    SharedText(const SharedText&) = delete;
    SharedText& operator=(const SharedText&) = delete;

    void Set(const std::string& text) {
        const size_t length = std::min(text.size(), kSize - 1);
        std::memcpy(m_Text, text.data(), length);
        static_cast<char*>(m_Text)[length] = '\0';
    }
    std::string Get() const { return static_cast<const char*>(m_Text); }

private:
    static constexpr size_t kSize = 256;

    void* m_Text;
};

void WriteAll(int file, const std::string& bytes) {
    for (size_t written = 0; written < bytes.size();) {
        const ssize_t count = write(file, bytes.data() + written, bytes.size() - written);
        if (count <= 0) {
            _exit(1); // nobody listens any more
        }
        written += static_cast<size_t>(count);
    }
}

/// A record is the kind, the text and a zero.
[[noreturn]] void BeChild(
    int file, std::FILE* output, SharedText& place, const std::function<void(const Tell&)>& body) {
    prctl(PR_SET_PDEATHSIG, SIGKILL); // a parent that is ended takes the child with it
    const rlimit none = {0, 0};
    setrlimit(RLIMIT_CORE, &none);
    dup2(fileno(output), STDOUT_FILENO);
    dup2(fileno(output), STDERR_FILENO);
    const Tell tell = [&, file](char kind, const std::string& text) {
        kind == kPlace ? place.Set(text) : WriteAll(file, kind + text + '\0');
    };
    body(tell);
    tell(kEnd, "");
    std::fflush(nullptr);
    _exit(0); // what the parent has in its buffers and lists is the parent's to end
}

std::string SignalName(int number) {
    const char* name = sigabbrev_np(number);
    return name ? std::string("SIG") + name : "signal " + std::to_string(number);
}

/// Splits what came so far into records; an incomplete one stays.
void Deliver(std::string& received, ChildEnd& end, const Tell& hear) {
    size_t zero = 0;
    while ((zero = received.find('\0')) != std::string::npos) {
        if (received[0] == kEnd) {
            end.m_IsDone = true;
        } else {
            hear(received[0], received.substr(1, zero - 1));
        }
        received.erase(0, zero + 1);
    }
}

/// Reads what there is; false when nothing will come any more.
bool ReadSome(int file, int milliseconds, std::string& received) {
    pollfd waiting = {.fd = file, .events = POLLIN, .revents = 0};
    if (poll(&waiting, 1, milliseconds) <= 0) {
        return true;
    }
    char buffer[4096];
    const ssize_t count = read(file, buffer, sizeof(buffer));
    if (count > 0) {
        received.append(buffer, static_cast<size_t>(count));
    }
    return count > 0;
}

std::string LastOutput(std::FILE* file) {
    std::string text;
    std::rewind(file);
    char buffer[kMostOutput];
    while (const size_t count = std::fread(buffer, 1, sizeof(buffer), file)) {
        text.append(buffer, count);
        if (text.size() > kMostOutput) {
            text.erase(0, text.size() - kMostOutput);
        }
    }
    return text;
}

std::string ReasonOf(int status, bool isLate, std::chrono::seconds limit) {
    if (isLate) {
        return "ran longer than " + std::to_string(limit.count()) + " s, ended by SIGKILL";
    }
    return WIFSIGNALED(status) ? "ended by " + SignalName(WTERMSIG(status))
                               : "ended with status " + std::to_string(WEXITSTATUS(status));
}

} // namespace

ChildEnd RunChild(
    const std::function<void(const Tell&)>& body, const Tell& hear, std::chrono::seconds limit) {
    const FilePtr output(std::tmpfile(), &std::fclose);
    if (!output) {
        Fail("cannot make a file");
    }
    Pipe channel;
    SharedText place;
    std::fflush(nullptr); // or the child prints it too
    const pid_t child = fork();
    if (child < 0) {
        Fail("cannot make a process");
    }
    if (child == 0) {
        BeChild(channel.m_Ends[1], output.get(), place, body);
    }
    channel.CloseWriting();
    const auto start = Clock::now();
    ChildEnd end;
    std::string received;
    int status = 0;
    bool isLate = false;
    // The end of the process counts, not that of the pipe: a process of its own may hold that.
    while (waitpid(child, &status, WNOHANG) == 0) {
        if (!ReadSome(channel.m_Ends[0], kTurn, received)) {
            usleep(1000); // told everything, and about to end
        }
        Deliver(received, end, hear);
        if (!isLate && Clock::now() - start > limit) {
            isLate = true;
            kill(child, SIGKILL);
        }
    }
    for (size_t before = received.size() + 1; before != received.size();) {
        before = received.size();
        ReadSome(channel.m_Ends[0], 0, received);
    }
    Deliver(received, end, hear);
    end.m_IsDone = end.m_IsDone && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    if (!end.m_IsDone) {
        end.m_Reason = ReasonOf(status, isLate, limit);
    }
    end.m_Place = place.Get();
    end.m_Output = LastOutput(output.get());
    return end;
}
