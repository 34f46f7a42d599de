#include "host/settings/Document.h"
#include "host/settings/DocumentFile.h"
#include "host/settings/XmlFile.h"
#include "tests/support/HostTest.h"

#include <cerrno>
#include <climits>
#include <csignal>
#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

// Saves that are killed or fail at their n-th change of the disk, for every n. Changes are the
// writes, syncs, renamings and removals of the program and of everything loaded, SQLite included,
// and what else calls Fails.

namespace {

enum class Fault {
    kKill,     ///< the process is killed, a write half done
    kFailOnce, ///< the change fails
    kFull,     ///< it fails like all that follow, except removals
};
enum class End { kKilled, kFailed, kSaved };

Fault gFault = Fault::kKill;
int gNext = 0; // the fault comes at the change of that number from now on; 0 for never

/// Whether a change fails. When the process is to be killed, `half` of it is done before.
bool Fails(const std::function<void()>& half = [] {}) {
    if (gNext == 0 || --gNext > 0) {
        return false;
    }
    if (gFault == Fault::kKill) {
        half();
        kill(getpid(), SIGKILL);
    }
    gNext = gFault == Fault::kFull ? 1 : 0;
    errno = ENOSPC;
    return true;
}

template <class Function>
Function* Original(Function* /*own*/, const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

using Save = void(const std::string& file, const std::wstring& word);
using Load = std::string(const std::filesystem::path& file);

End SaveInChild(Save* save, const std::string& file, Fault fault, int change) {
    const pid_t child = fork();
    if (child == 0) {
        gFault = fault;
        gNext = change;
        try {
            save(file, L"new");
            _exit(0);
        } catch (const DocumentError&) {
            _exit(1);
        }
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFSIGNALED(status) ? End::kKilled : status == 0 ? End::kSaved : End::kFailed;
}

/// `failsLate` is for saves that may fail when the new content is already there.
void ExpectOldOrNew(Save* save, Load* load, bool failsLate, bool isThere, Fault fault) {
    int changes = 1;
    std::string saved;
    for (int change = 0; change <= changes; ++change) { // the first time nothing happens
        const TemporaryFolder folder;
        const std::string file = folder / "file";
        const auto content = [&] { return std::filesystem::exists(file) ? load(file) : ""; };
        isThere ? save(file, L"old") : void();
        const std::string before = content();
        if (change == 0) {
            gNext = INT_MAX;
            save(file, L"new");
            changes = INT_MAX - std::exchange(gNext, 0);
            saved = content();
            continue;
        }
        const End end = SaveInChild(save, file, fault, change);
        const std::string after = content();
        EXPECT_TRUE((after == before && end != End::kSaved) ||
                    (after == saved && (end != End::kFailed || failsLate)))
            << "change " << change << ", fault " << static_cast<int>(fault) << ": " << after;
        const std::filesystem::directory_iterator files(folder / "");
        EXPECT_TRUE(end == End::kKilled || std::distance(begin(files), {}) <= 1);
    }
    EXPECT_GT(changes, 3) << "the disk was never changed";
}

void ExpectOldOrNew(Save* save, Load* load, bool failsLate) {
    for (const bool isThere : {true, false}) {
        for (const Fault fault : {Fault::kKill, Fault::kFailOnce, Fault::kFull}) {
            ExpectOldOrNew(save, load, failsLate, isThere, fault);
        }
    }
}

using InterruptedSaveTest = HostTest;

} // namespace

TEST_F(InterruptedSaveTest, XmlFileHoldsTheOldTextOrTheNew) {
    const auto save = [](const std::string& file, const std::wstring& word) {
        const auto stream = XmlFile::Make();
        const auto text = CreatableString::Make(word);
        stream->WriteElement(CreatableString::Make(L"A").Get(), 0, text.Get(), 0);
        stream->Commit(file);
    };
    ExpectOldOrNew(save, &Content, true); // the folder is synced after the renaming
}

TEST_F(InterruptedSaveTest, DocumentHoldsTheOldContentOrTheNew) {
    const auto save = [](const std::string& file, const std::wstring& word) {
        Document document = Document::Save(file);
        const auto root = Query<IFolderStream>(document.Root().Get());
        const auto text = CreatableString::Make(std::wstring(5000, word.front())); // over a page
        for (const wchar_t* entry : {L"a", L"b", L"c"}) {
            root->WriteString(CreatableString::Make(entry).Get(), text.Get());
            Fails();
        }
        document.Commit();
    };
    const auto load = [](const std::filesystem::path& file) {
        const Database database = OpenToLoad(file);
        Statement texts(database, "SELECT group_concat(value) FROM entry");
        return texts.Step() ? std::string(texts.Bytes(0)) : "";
    };
    ExpectOldOrNew(save, load, false);
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
    return Fails([=] { original(file, data, size / 2, place); })
               ? -1
               : original(file, data, size, place);
}
IN_FRONT int rename(const char* from, const char* to) noexcept {
    static const auto original = Original(&rename, "rename");
    return Fails() ? -1 : original(from, to);
}
IN_FRONT int unlink(const char* file) noexcept {
    static const auto original = Original(&unlink, "unlink");
    return gFault != Fault::kFull && Fails() ? -1 : original(file);
}
IN_FRONT int fsync(int /*file*/) {
    return Fails() ? -1 : 0;
}
IN_FRONT int fdatasync(int /*file*/) {
    return Fails() ? -1 : 0;
}
