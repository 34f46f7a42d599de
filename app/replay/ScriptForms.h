#pragma once

#include "app/replay/Script.h"
#include "app/replay/ScriptLine.h"

/// What the lines before have left behind for the next one.
struct ScriptContext {
    std::filesystem::path m_Folder; ///< paths are relative to it
    int32_t m_Held = 0;             ///< the button that was pressed and not yet released
};

/// One command of the script language. `m_Read` is called with the words after the name, and throws
/// UsageError.
struct ScriptForm {
    std::string_view m_Name;
    std::string_view m_Arguments;
    std::string_view m_Meaning;
    Command (*m_Read)(ScriptLine& line, ScriptContext& context);
};

std::span<const ScriptForm> ScriptForms();

extern const std::span<const Word> kPropertyWords;
