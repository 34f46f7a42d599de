#include "tests/host/FaultyDisk.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

Fault gFault;
int gNext = 0; // the fault comes at the change of that number from now on; 0 for never
bool gIsStruck = false;

/// Whether a change fails. When the process is to be killed, `half` of it is done before.
template <class Half>
bool Fails(Half&& half) {
    if (gNext == 0 || --gNext > 0) {
        return false;
    }
    if (gFault == Fault::kKill) {
        half();
        kill(getpid(), SIGKILL);
    }
    gIsStruck = true;
    gNext = gFault == Fault::kFail ? 1 : 0;
    errno = ENOSPC;
    return true;
}

bool Fails() {
    return Fails([] {});
}

template <class Function>
Function* Original(Function* /*own*/, const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

Ending RunChild(Fault fault, int change, const std::function<bool()>& save) {
    const pid_t child = fork();
    if (child == 0) {
        gFault = fault;
        gNext = change;
        const bool isSaved = save();
        const Ending struck = isSaved ? Ending::kSavedAnyway : Ending::kFailed;
        _exit(static_cast<int>(gIsStruck || !isSaved ? struck : Ending::kUntouched));
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFSIGNALED(status) ? Ending::kKilled : Ending(WEXITSTATUS(status));
}

} // namespace

void PassPoint() {
    Fails();
}

void WithEveryFault(Fault fault, const std::function<void()>& prepare,
    const std::function<bool()>& save, const std::function<void(Ending)>& check) {
    Ending ending = Ending::kKilled;
    int change = 0;
    while (ending != Ending::kUntouched && !testing::Test::HasFailure()) {
        const testing::ScopedTrace trace(__FILE__, __LINE__, std::to_string(++change) + ". change");
        prepare();
        ending = RunChild(fault, change, save);
        check(ending);
    }
    EXPECT_GT(change, 3) << "the disk was never changed";
}

// In front of the C library's. A process that ends loses nothing that was not synced, so nothing
// is.
#define IN_FRONT extern "C" __attribute__((visibility("default")))

IN_FRONT ssize_t write(int file, const void* data, size_t size) {
    static const auto original = Original(&write, "write");
    return Fails([=] { original(file, data, size / 2); }) ? -1 : original(file, data, size);
}
IN_FRONT ssize_t pwrite64(int file, const void* data, size_t size, off64_t place) {
    static const auto original = Original(&pwrite64, "pwrite64");
    const size_t half = size / 2;
    const auto writeSecondHalf = [=] { // a beginning that is missing is the worse half
        original(file, static_cast<const char*>(data) + half, size - half,
            place + static_cast<off64_t>(half));
    };
    return Fails(writeSecondHalf) ? -1 : original(file, data, size, place);
}
IN_FRONT int ftruncate64(int file, off64_t size) noexcept {
    static const auto original = Original(&ftruncate64, "ftruncate64");
    return Fails() ? -1 : original(file, size);
}
IN_FRONT int rename(const char* from, const char* to) noexcept {
    static const auto original = Original(&rename, "rename");
    return Fails() ? -1 : original(from, to);
}
IN_FRONT int unlink(const char* file) noexcept {
    static const auto original = Original(&unlink, "unlink");
    return Fails() ? -1 : original(file);
}
IN_FRONT int fsync(int /*file*/) {
    return Fails() ? -1 : 0;
}
IN_FRONT int fdatasync(int /*file*/) {
    return Fails() ? -1 : 0;
}
