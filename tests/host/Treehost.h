#pragma once

#include "tests/host/HostTest.h"

#include <cstdio>
#include <fstream>
#include <sys/wait.h>

struct Outcome {
    int m_Status;
    std::string m_Output; ///< standard output
    std::string m_Errors; ///< standard error
};

inline std::string Content(const std::filesystem::path& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Runs the command as a process of its own from a folder that is not the program's.
class TreehostRun : public testing::Test {
protected:
    /// `shell` is what follows the program's name; `input` goes to standard input.
    Outcome Run(const std::string& shell, const std::string& input = "") {
        return RunProgram(BuildFolder() / "treehost", shell, input);
    }
    Outcome RunProgram(
        const std::filesystem::path& program, const std::string& shell, const std::string& input) {
        std::ofstream(Path("input")) << input;
        const std::string line = "cd '" + m_Folder.Path().string() + "' && '" + program.string() +
                                 "' < input 2> errors > output " + shell;
        const int status = std::system(line.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, Content(Path("output")),
            Content(Path("errors"))};
    }
    std::filesystem::path Path(const char* name) const { return m_Folder.Path() / name; }

    TemporaryFolder m_Folder;
};
