#include "app/commands/Commands.h"
#include "app/commands/ReadWithBar.h"
#include "app/replay/Clock.h"
#include "app/replay/Script.h"
#include "app/session/Session.h"
#include "app/tree/Rows.h"
#include "host/sources/Source.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>

namespace {

std::vector<Step> OpenScript(const std::string& path) {
    if (path == "-") {
        return ReadScript(std::cin, "standard input", std::filesystem::current_path());
    }
    std::error_code unknown;
    if (!std::filesystem::exists(path, unknown)) {
        throw SourceMissing("cannot open " + path + ": no such file");
    }
    errno = 0;
    std::ifstream file(path);
    auto steps = ReadScript(file, path, std::filesystem::absolute(path).parent_path());
    if (!file.eof()) {
        throw std::runtime_error("cannot read " + path + ": " + std::strerror(errno));
    }
    return steps;
}

/// Plays a script as if there were a window: the picture is drawn again when the control says that
/// it changed, and after what the host itself does to it.
class Player {
public:
    Player(const TreeView& view, Size size, std::filesystem::path shots)
        : m_Session(view.Control(), size, std::cout), m_Failures(view.Failures()),
          m_Shots(std::move(shots)) {
        Redraw();
    }

    void Play(const Step& step) {
        std::visit([&](const auto& command) { Play(command, step.m_Text); }, step.m_Command);
        m_Session.Draw(m_Picture, {.m_Size = m_Session.GetSize()});
    }

private:
    void Play(const Input& input, const std::string&) { m_Session.Feed(input); }

    void Play(const SizeCommand& command, const std::string& text) {
        m_Session.Resize(command.m_Size);
        m_Session.Note(text, "");
        Redraw();
    }

    void Play(const WaitCommand& command, const std::string& text) {
        m_Clock.Advance(int64_t{command.m_Milliseconds} * 1000);
        m_Session.Note(text, "");
    }

    void Play(const BindCommand& command, const std::string& text) {
        const auto source =
            OpenSource(command.m_Path.string(), SourceKind::kByContent, {m_Failures});
        Finish(text, Tree()->put_Collection(source.Get()));
    }

    void Play(const SelectCommand& command, const std::string& text) {
        m_Session.NoteMarks();
        Finish(text, Tree()->SelectNode(command.m_Row, command.m_Flags));
    }

    void Play(const OpenCommand& command, const std::string& text) {
        const Row row = RowAt(Tree(), command.m_Row);
        Finish(text, Tree()->MakeNodeVisible(row.m_Collection.Get(), row.m_Index));
    }

    void Play(const CompactCommand&, const std::string& text) {
        Finish(text, Tree()->CompactNodes());
    }

    void Play(const SetCommand& command, const std::string& text) {
        Finish(text, Tree()->Control(command.m_Property, command.m_Value));
    }

    void Play(const GetCommand& command, const std::string& text) {
        int32_t value = 0;
        const int32_t status = Tree()->Inquire(command.m_Property, &value);
        const std::string result = status < 0 ? "" : " value=" + std::to_string(value);
        m_Session.Note(text, StatusText(status) + result);
    }

    void Play(const ShotCommand& command, const std::string& text) {
        std::filesystem::create_directories(m_Shots);
        WritePicture(m_Picture.Surface(), (m_Shots / command.m_File).string(), command.m_File);
        m_Session.Note(text, "");
    }

    IUITree* Tree() { return m_Session.Tree(); }

    void Finish(const std::string& text, int32_t status) {
        m_Session.Note(text, StatusText(status));
        Redraw();
    }

    void Redraw() { m_Session.Draw(m_Picture, {.m_Size = m_Session.GetSize()}, true); }

    Session m_Session;
    ReadFailuresPtr m_Failures;
    StandingClock m_Clock;
    std::filesystem::path m_Shots;
    KeptPicture m_Picture; ///< what a window would show now
};

} // namespace

void RunReplay(const ReplayOptions& options) {
    const Size size = ParseSize(options.m_Size);
    if (options.m_Path == "-" && options.m_Script == "-") {
        throw UsageError("PATH and SCRIPT cannot both be standard input");
    }
    if (options.m_Shots.empty()) {
        throw UsageError("--shots: a folder is missing");
    }
    const auto steps = OpenScript(options.m_Script);
    const auto shots = std::filesystem::absolute(options.m_Shots);

    const TreeView view = ReadWithBar(options.m_Path, 0);
    Player player(view, size, shots);
    for (const Step& step : steps) {
        player.Play(step);
    }
    view.CheckAllRead();
}
