// treehost: loads the tree control like any host and shows a folder or a file with it.

#include "app/commands/Commands.h"
#include "app/replay/Script.h"
#include "app/settings/Palette.h"
#include "app/tree/TreeView.h"
#include "host/components/Module.h"
#include "host/settings/DocumentError.h"
#include "host/sources/Source.h"
#include "host/text/Text.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <clocale>
#include <csignal>
#include <filesystem>
#include <iostream>
#include <map>

namespace {

enum ExitStatus { kDone = 0, kFailed = 1, kWrongUsage = 2, kNoModule = 3 };

constexpr const char* kPathHelp =
    "A folder, a file with JSON, XML, an archive or an indented outline, or - for standard input";
constexpr const char* kDepthHelp = "Levels to open";

int Complain(const std::string& text, ExitStatus status) {
    const std::wstring line = ToWide(text.substr(0, text.find('\n')));
    std::cerr << "treehost: " << ToPrintable(Refer(line)) << '\n';
    return status;
}

int ComplainOfEach(const std::string& lines) {
    for (size_t at = 0; at < lines.size(); at = std::min(lines.find('\n', at), lines.size()) + 1) {
        Complain(lines.substr(at), kFailed);
    }
    return kFailed;
}

/// The file is made absolute while the process is still where it was started.
void AddFile(CLI::App* command, const char* name, std::string& file, const std::string& help) {
    command->add_option(name, file, help)
        ->type_name("FILE")
        ->transform([](const std::string& given) {
            if (given.empty()) {
                throw CLI::ValidationError("a file name is missing");
            }
            return std::filesystem::absolute(given).string();
        });
}

void AddKind(CLI::App* command, SourceKind& kind) {
    static const std::map<std::string, SourceKind> kKinds{{"outline", SourceKind::kOutline},
        {"json", SourceKind::kJson}, {"xml", SourceKind::kXml}, {"archive", SourceKind::kArchive}};
    command
        ->add_option_function<std::string>(
            "--as", [&kind](const std::string& name) { kind = kKinds.at(name); },
            "What the file is: archive, json, xml or outline; else its content tells")
        ->type_name("KIND")
        ->check([](const std::string& name) {
            return kKinds.contains(name) ? "" : "there is no kind " + name;
        });
}

void AddTheme(CLI::App* command, std::string& theme) {
    command->add_option("--theme", theme, "The colours")->check(CLI::IsMember(ThemeNames()));
}

void AddGuides(CLI::App* command, bool& hasGuides) {
    command->add_flag("--guides", hasGuides, "Draw lines from open rows along what is below them");
}

void AddScale(CLI::App* command, double& scale, const std::string& help) {
    command->add_option("--scale", scale, help)->check(CLI::Range(1.0, 4.0));
}

void AddShot(CLI::App& app, ShotOptions& options) {
    CLI::App* command = app.add_subcommand("shot", "Draw the tree to a PNG file");
    command->add_option("PATH", options.m_Path, kPathHelp)->required();
    command->add_option("--out", options.m_Out, "The file to write, - for standard output")
        ->capture_default_str();
    command->add_option("--size", options.m_Size, "WIDTHxHEIGHT in pixels")->capture_default_str();
    AddScale(command, options.m_Scale, "The picture's pixels along one of the size's");
    command->add_option("--scroll", options.m_Scroll, "The first row shown, from 0")
        ->check(CLI::Range(0, INT32_MAX));
    command
        ->add_option("--open", options.m_Open,
            "A row to open, from 0 as the tree stands then; may be repeated")
        ->check(CLI::Range(0, INT32_MAX))
        ->allow_extra_args(false);
    command->add_option("--depth", options.m_Depth, kDepthHelp)->check(CLI::Range(0, INT32_MAX));
    command->add_flag("--page", options.m_Page, "Draw the settings page beside the tree");
    AddFile(command, "--document", options.m_Document,
        "The document with the settings to draw it with");
    AddTheme(command, options.m_Theme);
    AddGuides(command, options.m_HasGuides);
    AddKind(command, options.m_Kind);
    command->callback([&options] { RunShot(options); });
}

void AddRun(CLI::App& app, WindowOptions& options) {
    CLI::App* command = app.add_subcommand("run", "Show the tree in a window");
    command->add_option("PATH", options.m_Path, kPathHelp)->required();
    command->add_option("--size", options.m_Size, "WIDTHxHEIGHT in pixels")->capture_default_str();
    AddScale(
        command, options.m_Scale, "The display's pixels along one of the size's, else its own");
    command->add_flag("--record", options.m_Record, "Print what replay prints of a script");
    AddFile(command, "--document", options.m_Document,
        "The document that keeps the settings; saved when the window closes");
    AddTheme(command, options.m_Theme);
    AddGuides(command, options.m_HasGuides);
    AddKind(command, options.m_Kind);
    command->callback([&options] { RunWindow(options); });
}

void AddReplay(CLI::App& app, ReplayOptions& options) {
    CLI::App* command = app.add_subcommand("replay", "Play a script of input and print the events");
    command->add_option("PATH", options.m_Path, kPathHelp)->required();
    command->add_option("SCRIPT", options.m_Script, "A script, or - for standard input")
        ->required();
    command->add_option("--shots", options.m_Shots, "The folder for the pictures of shot")
        ->capture_default_str();
    command->add_option("--size", options.m_Size, "WIDTHxHEIGHT in pixels")->capture_default_str();
    command->footer(ScriptHelp());
    command->callback([&options] { RunReplay(options); });
}

void AddRows(CLI::App& app, RowsOptions& options) {
    CLI::App* command = app.add_subcommand("rows", "Print the visible rows");
    command->add_option("PATH", options.m_Path, kPathHelp)->required();
    command->add_option("--depth", options.m_Depth, kDepthHelp)->check(CLI::Range(0, INT32_MAX));
    command->add_option("--find", options.m_Find, "Only rows with this in their label")
        ->type_name("TEXT");
    command->add_flag("--json", options.m_AsJson, "For programs");
    AddKind(command, options.m_Kind);
    command->callback([&options] { RunRows(options); });
}

void AddSettings(CLI::App& app, SettingsOptions& options) {
    CLI::App* command = app.add_subcommand("settings", "Change and print a control's settings");
    command
        ->add_option("--set", options.m_Set,
            "NAME=VALUE, where NAME is a setting's name or number; may be repeated")
        ->allow_extra_args(false);
    command->add_flag("--list", options.m_List, "Print the settings; without --set it is implied");
    AddFile(command, "--document", options.m_Document,
        "A document to load the settings from and to save them to");
    AddFile(
        command, "--xml", options.m_Xml, "The same as XML; a document that is there goes over it");
    command->callback([&options] { RunSettings(options); });
}

void AddInfo(CLI::App& app, InfoOptions& options) {
    CLI::App* command = app.add_subcommand("info", "Print the control's interfaces and parameters");
    command->add_flag("--json", options.m_AsJson, "For programs");
    command
        ->add_flag("--paths", options.m_Paths, "Print what is loaded from where, and nothing else")
        ->excludes("--json");
    command->callback([&options] { RunInfo(options); });
}

void AddValidate(CLI::App& app, ValidateOptions& options) {
    CLI::App* command = app.add_subcommand("validate", "Hold a module to what modules promise");
    AddFile(command, "MODULE", options.m_Module, "The module's file");
    command->add_option(
        "COMPONENT", options.m_Component, "Its component, when it exports the names of several");
    command->add_flag("--list", options.m_List, "Print the checks and what they prove");
    command->add_option("--only", options.m_Only, "A regular expression for the names of checks");
    command->add_flag("--json", options.m_AsJson, "For programs");
    AddFile(command, "--junit", options.m_JUnit, "A file to write for build servers");
    command->add_flag(
        "--in-process", options.m_InProcess, "Without child processes, for a debugger");
    command->add_option("--time-limit", options.m_TimeLimit, "For each check")
        ->option_text("SECONDS [300]")
        ->check(CLI::Range(1, 86'400))
        ->capture_default_str();
    command->footer(
        "It ends with 0 when no check failed, 1 when one did, 2 when it was called wrongly or "
        "no check\nmatched, and 3 when the module cannot be loaded.");
    command->callback([&options] { RunValidate(options); });
}

/// `treehost help COMMAND` is `treehost COMMAND --help`.
void AddHelp(CLI::App& app, std::string& name) {
    CLI::App* command = app.add_subcommand("help", "Print help on a command, or this");
    command->add_option("COMMAND", name, "One of these commands");
    command->callback([&app, &name] {
        if (name.empty()) { // not app.help(), which is that of the command being run
            std::cout << app.get_formatter()->make_help(
                &app, app.get_name(), CLI::AppFormatMode::Normal);
            return;
        }
        const auto found =
            app.get_subcommands([&name](const CLI::App* each) { return each->get_name() == name; });
        if (found.empty()) {
            throw UsageError("there is no command " + name);
        }
        std::cout << found.front()->help("treehost");
    });
}

/// What nobody takes, in the order in which it was typed.
std::string NotTaken(const CLI::App& app, int count, char** arguments) {
    std::vector<std::string> left = app.remaining(true);
    std::string text;
    for (int i = 1; i < count; ++i) {
        const auto found = std::find(left.begin(), left.end(), arguments[i]);
        if (found != left.end()) {
            text += ' ' + *found;
            left.erase(found);
        }
    }
    return text;
}

int ParseAndRun(int count, char** arguments) {
    CLI::App app("Shows a tree with the tree control.", "treehost");
    app.set_version_flag("--version", "treehost " TREEHOST_VERSION);
    app.require_subcommand(1);
    ShotOptions shot;
    WindowOptions window;
    ReplayOptions replay;
    RowsOptions rows;
    SettingsOptions settings;
    InfoOptions info;
    ValidateOptions validate;
    std::string helpOn;
    AddRun(app, window);
    AddShot(app, shot);
    AddReplay(app, replay);
    AddRows(app, rows);
    AddSettings(app, settings);
    AddInfo(app, info);
    AddValidate(app, validate);
    AddHelp(app, helpOn);
    try {
        app.parse(count, arguments);
    } catch (const CLI::ExtrasError&) {
        return Complain("not expected:" + NotTaken(app, count, arguments), kWrongUsage);
    } catch (const CLI::RequiredError& error) {
        const std::vector<std::string> left = app.remaining();
        const bool isCommand = !left.empty() && !left.front().starts_with('-');
        return Complain(
            isCommand ? "there is no command " + left.front() : error.what(), kWrongUsage);
    } catch (const CLI::ParseError& error) {
        return error.get_exit_code() == 0 ? app.exit(error) : Complain(error.what(), kWrongUsage);
    }
    if (!std::cout.flush()) {
        return Complain("cannot write to standard output", kFailed);
    }
    return kDone;
}

} // namespace

int main(int count, char** arguments) {
    std::setlocale(LC_COLLATE, ""); // for the order of names; messages and numbers stay as they are
    // A closed standard output and a file that may not grow are reported like any other failure.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    try {
        return ParseAndRun(count, arguments);
    } catch (const UsageError& error) {
        return Complain(error.what(), kWrongUsage);
    } catch (const SourceMissing& error) {
        return Complain(error.what(), kWrongUsage);
    } catch (const DocumentMissing& error) {
        return Complain(error.what(), kWrongUsage);
    } catch (const ModuleError& error) {
        return Complain(error.what(), kNoModule);
    } catch (const std::filesystem::filesystem_error& error) {
        std::error_code unknown;
        const bool isGone = std::filesystem::current_path(unknown).empty();
        const std::string reason = error.path1().string() + ": " + error.code().message();
        return Complain(isGone ? "the working folder is gone" : "cannot use " + reason, kFailed);
    } catch (const NotAllRead& error) {
        return ComplainOfEach(error.what());
    } catch (const std::bad_alloc&) {
        return Complain("there is not enough memory", kFailed);
    } catch (const std::exception& error) {
        return Complain(error.what(), kFailed);
    }
}
