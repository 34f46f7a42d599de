#include "app/replay/ScriptForms.h"

#include "app/UsageError.h"
#include "framework/interfaces/TreeInterfaces.h"
#include "framework/interfaces/TreeProperties.h"
#include "host/text/Numbers.h"

namespace {

constexpr int32_t kLongestWait = 86'400'000; // a day
constexpr Word kSpeedWords[] = {{"fast", POINTERSTATE_FAST}};
constexpr Word kFlagWords[] = {{"absolute", SELECT_ABSOLUTE}, {"current", SELECT_CURRENT},
    {"scroll", SELECT_SCROLL}, {"unmarked", SELECT_UNMARKED}};

PointerInput ReadPointer(ScriptLine& line, int32_t action, int32_t usualButton) {
    PointerInput input{.m_Action = action};
    input.m_X = line.TakeNumber("a coordinate");
    input.m_Y = line.TakeNumber("a coordinate");
    input.m_State = line.TakeWords("a button", kButtonWords, usualButton);
    input.m_Keys = line.TakeWords("a modifier key", kKeysWords, 0);
    return input;
}

Command ReadPress(ScriptLine& line, ScriptContext& context) {
    const auto input = ReadPointer(line, POINTERACTION_PRESS, POINTERSTATE_PRIMARY);
    context.m_Held = input.m_State;
    return input;
}

Command ReadRelease(ScriptLine& line, ScriptContext& context) {
    const int32_t held = context.m_Held != 0 ? context.m_Held : POINTERSTATE_PRIMARY;
    context.m_Held = 0;
    return ReadPointer(line, POINTERACTION_RELEASE, held);
}

Command ReadMove(ScriptLine& line, ScriptContext& context) {
    return ReadPointer(line, POINTERACTION_MOVE, context.m_Held);
}

Command ReadWheel(ScriptLine& line, ScriptContext& /*context*/) {
    PointerInput input{.m_State = POINTERSTATE_WHEEL};
    input.m_X = line.TakeNumber("a coordinate");
    input.m_Y = line.TakeNumber("a coordinate");
    input.m_Keys = line.TakeInteger("a distance");
    input.m_State |= line.TakeWords("\"fast\"", kSpeedWords, 0);
    return input;
}

Command ReadTouch(ScriptLine& line, ScriptContext& /*context*/) {
    const std::string word = line.Take("a phase");
    const auto phase = word == "start"    ? TOUCHPHASE_START
                       : word == "update" ? TOUCHPHASE_UPDATE
                                          : ReadNumber(word);
    if (!phase) {
        throw UsageError("not a phase: " + word);
    }
    return TouchInput{*phase, line.TakeNumber("a distance")};
}

Command ReadKey(ScriptLine& line, ScriptContext& /*context*/) {
    const std::string word = line.Take("a key");
    for (const Word& key : kKeyWords) {
        if (key.m_Name == word) {
            return KeyInput{static_cast<Key>(key.m_Value)};
        }
    }
    throw UsageError("not a key: " + word);
}

Command ReadType(ScriptLine& line, ScriptContext& /*context*/) {
    return TypedInput{line.TakeRest("a text")};
}

Command ReadWait(ScriptLine& line, ScriptContext& /*context*/) {
    return WaitCommand{line.TakeInteger("milliseconds of at most a day", 0, kLongestWait)};
}

Command ReadSize(ScriptLine& line, ScriptContext& /*context*/) {
    return SizeCommand{ParseSize(line.Take("a size"))};
}

Command ReadBind(ScriptLine& line, ScriptContext& context) {
    const std::string path = line.TakeRest("a path");
    std::error_code error;
    if (!std::filesystem::exists(context.m_Folder / path, error)) {
        throw UsageError("nothing to bind: " + path);
    }
    return BindCommand{context.m_Folder / path};
}

Command ReadSelect(ScriptLine& line, ScriptContext& /*context*/) {
    const int32_t row = line.TakeInteger("a row");
    return SelectCommand{row, line.TakeWords("flags", kFlagWords)};
}

Command ReadOpen(ScriptLine& line, ScriptContext& /*context*/) {
    return OpenCommand{line.TakeInteger("a row")};
}

Command ReadCompact(ScriptLine&, ScriptContext& /*context*/) {
    return CompactCommand{};
}

Command ReadSet(ScriptLine& line, ScriptContext& /*context*/) {
    const int32_t property = line.TakeWords("a property", kPropertyWords);
    return SetCommand{property, line.TakeInteger("a value")};
}

Command ReadGet(ScriptLine& line, ScriptContext& /*context*/) {
    return GetCommand{line.TakeWords("a property", kPropertyWords)};
}

Command ReadShot(ScriptLine& line, ScriptContext& /*context*/) {
    const std::string file = line.TakeRest("a file name");
    if (std::filesystem::path(file).filename() != file || file == "." || file == "..") {
        throw UsageError("not a plain file name: " + file);
    }
    return ShotCommand{file};
}

constexpr Word kProperties[] = {{"row-height", PROP_ELEMENTHEIGHT}, {"text-color", PROP_TEXTCOLOR},
    {"default-sizes", PROP_USEDEFAULTSTYLE}, {"scroll-position", PROP_SCROLLPOS},
    {"options", PROP_OPTIONS}, {"select-on-press", PROP_SELECTONPRESS},
    {"clear-all-on-select", PROP_CLEARALLONSELECT},
    {"root-toggle-on-icon", PROP_ROOTTOGGLEONICONONLY},
    {"child-toggle-on-icon", PROP_CHILDTOGGLEONICONONLY}, {"reset-icons", PROP_RESETICONS}};

constexpr ScriptForm kForms[] = {
    {"press", "X Y [BUTTON] [KEYS]",
        "A button: primary, secondary; with shift, control or shift+control", &ReadPress},
    {"release", "X Y [BUTTON] [KEYS]", "The same; without BUTTON the one that is held",
        &ReadRelease},
    {"move", "X Y [BUTTON] [KEYS]", "The same", &ReadMove},
    {"wheel", "X Y DISTANCE [fast]", "100 is one step; positive goes to later rows", &ReadWheel},
    {"touch", "PHASE DISTANCE", "start, then update; pixels since the start, down is positive",
        &ReadTouch},
    {"key", "NAME", "A key of the host: up, down, page-up, page-down, home, end, f5, copy, ...",
        &ReadKey},
    {"type", "TEXT", "Goes to the next row whose label begins so; + - and * are keys, / searches",
        &ReadType},
    {"wait", "MILLISECONDS", "Moves the clock, which stands still otherwise", &ReadWait},
    {"size", "WIDTHxHEIGHT", "Resizes the control", &ReadSize},
    {"bind", "PATH", "Another tree; relative to the script's folder", &ReadBind},
    {"select", "ROW FLAGS", "absolute, current, scroll, unmarked", &ReadSelect},
    {"open", "ROW", "Opens a row, counted from 0", &ReadOpen},
    {"compact", "", "Closes all rows", &ReadCompact},
    {"set", "PROPERTY VALUE", "A number; hexadecimal after 0x or #", &ReadSet},
    {"get", "PROPERTY", "Prints the value too", &ReadGet},
    {"shot", "FILE", "Writes what is shown to a PNG file", &ReadShot},
};

} // namespace

const std::span<const Word> kPropertyWords = kProperties;

std::span<const ScriptForm> ScriptForms() {
    return kForms;
}
