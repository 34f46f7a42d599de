// treehost: loads the tree control like any host and shows a folder or an outline with it.

#include "app/Commands.h"
#include "host/Module.h"
#include "host/Source.h"

#include <CLI/CLI.hpp>
#include <csignal>
#include <iostream>

namespace {

enum ExitStatus { kDone = 0, kFailed = 1, kWrongUsage = 2, kNoModule = 3 };

constexpr const char* kPathHelp = "A folder, an indented outline, or - for standard input";
constexpr const char* kDepthHelp = "Levels to open";

int Complain(const std::string& text, ExitStatus status) {
    std::cerr << "treehost: " << text.substr(0, text.find('\n')) << '\n';
    return status;
}

void AddShot(CLI::App& app, ShotOptions& options) {
    CLI::App* command = app.add_subcommand("shot", "Draw the tree to a PNG file");
    command->add_option("PATH", options.m_Path, kPathHelp)->required();
    command->add_option("--out", options.m_Out, "The file to write")->capture_default_str();
    command->add_option("--size", options.m_Size, "WIDTHxHEIGHT in pixels")->capture_default_str();
    command->add_option("--scroll", options.m_Scroll, "The first row shown, from 0")
        ->check(CLI::Range(0, INT32_MAX));
    command
        ->add_option("--open", options.m_Open,
            "A row to open, from 0 as the tree stands then; may be repeated")
        ->check(CLI::Range(0, INT32_MAX))
        ->allow_extra_args(false);
    command->add_option("--depth", options.m_Depth, kDepthHelp)->check(CLI::Range(0, INT32_MAX));
    command->callback([&options] { RunShot(options); });
}

void AddRows(CLI::App& app, RowsOptions& options) {
    CLI::App* command = app.add_subcommand("rows", "Print the visible rows");
    command->add_option("PATH", options.m_Path, kPathHelp)->required();
    command->add_option("--depth", options.m_Depth, kDepthHelp)->check(CLI::Range(0, INT32_MAX));
    command->callback([&options] { RunRows(options); });
}

void AddInfo(CLI::App& app, bool& asJson) {
    CLI::App* command = app.add_subcommand("info", "Print the control's interfaces and parameters");
    command->add_flag("--json", asJson, "For programs");
    command->callback([&asJson] { RunInfo(asJson); });
}

int ParseAndRun(int count, char** arguments) {
    CLI::App app("Shows a tree with the tree control.", "treehost");
    app.require_subcommand(1);
    ShotOptions shot;
    RowsOptions rows;
    bool asJson = false;
    AddShot(app, shot);
    AddRows(app, rows);
    AddInfo(app, asJson);
    try {
        app.parse(count, arguments);
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
    std::signal(SIGPIPE, SIG_IGN); // a closed standard output is reported like any other failure
    try {
        return ParseAndRun(count, arguments);
    } catch (const UsageError& error) {
        return Complain(error.what(), kWrongUsage);
    } catch (const SourceMissing& error) {
        return Complain(error.what(), kWrongUsage);
    } catch (const ModuleError& error) {
        return Complain(error.what(), kNoModule);
    } catch (const std::exception& error) {
        return Complain(error.what(), kFailed);
    }
}
