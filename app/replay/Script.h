#pragma once

#include "app/input/Input.h"
#include "app/view/Picture.h"

#include <filesystem>
#include <istream>
#include <vector>

// Scripts of input: one command in a line, words separated by blanks, coordinates in pixels.

struct SizeCommand {
    Size m_Size;
};
struct WaitCommand {
    int32_t m_Milliseconds;
};
struct BindCommand {
    std::filesystem::path m_Path;
};
struct SelectCommand {
    int32_t m_Row;
    int32_t m_Flags;
};
struct OpenCommand {
    int32_t m_Row;
};
struct CompactCommand {};
struct SetCommand {
    int32_t m_Property;
    int32_t m_Value;
};
struct GetCommand {
    int32_t m_Property;
};
struct ShotCommand {
    std::string m_File;
};

using Command = std::variant<Input, SizeCommand, WaitCommand, BindCommand, SelectCommand,
    OpenCommand, CompactCommand, SetCommand, GetCommand, ShotCommand>;

struct Step {
    std::string m_Text; ///< the line as it was written, single-spaced
    Command m_Command;
};

/// Reads a whole script. Paths in it are relative to `folder`. Throws UsageError, which names the
/// script and the line.
std::vector<Step> ReadScript(
    std::istream& input, const std::string& name, const std::filesystem::path& folder);

/// The commands and their words, for people.
std::string ScriptHelp();
