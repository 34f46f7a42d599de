#pragma once

#include "host/Cairo.h"
#include "tests/host/HostTest.h"

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

/// The width and height of a picture, as "120x90".
inline std::string SizeOf(const std::filesystem::path& path) {
    const SurfacePtr picture(cairo_image_surface_create_from_png(path.c_str()));
    return std::to_string(cairo_image_surface_get_width(picture.get())) + 'x' +
           std::to_string(cairo_image_surface_get_height(picture.get()));
}

/// The program as a shell starts it, on another machine through its emulator.
inline std::string Treehost(const std::filesystem::path& folder = BuildFolder()) {
    return EMULATOR " '" + (folder / "treehost").string() + "' ";
}

/// Runs the program as a process of its own from a folder that is not its own.
class TreehostRun : public testing::Test {
protected:
    /// `arguments` is what follows the program's name; `input` goes to standard input.
    Outcome Run(const std::string& arguments, const std::string& input = "",
        const std::string& program = Treehost()) {
        std::ofstream(m_Folder / "input") << input;
        const std::string line = "cd '" + (m_Folder / "").string() + "' && " + program +
                                 "< input 2> errors > output " + arguments;
        const int status = std::system(line.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, Content(m_Folder / "output"),
            Content(m_Folder / "errors")};
    }

    TemporaryFolder m_Folder;
};
