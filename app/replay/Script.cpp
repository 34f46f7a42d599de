#include "app/replay/Script.h"

#include "app/UsageError.h"
#include "app/replay/ScriptForms.h"

#include <algorithm>
#include <iomanip>
#include <sstream>

namespace {

Step ReadStep(ScriptLine& line, ScriptContext& context) {
    std::string text = line.Text();
    const std::string name = line.Take("a command");
    const auto forms = ScriptForms();
    const auto form =
        std::ranges::find_if(forms, [&](const ScriptForm& each) { return each.m_Name == name; });
    if (form == forms.end()) {
        throw UsageError("no such command: " + name);
    }
    Command command = form->m_Read(line, context);
    line.End();
    return {std::move(text), std::move(command)};
}

} // namespace

std::vector<Step> ReadScript(
    std::istream& input, const std::string& name, const std::filesystem::path& folder) {
    std::vector<Step> steps;
    ScriptContext context{.m_Folder = folder};
    std::string text;
    for (int32_t number = 1; std::getline(input, text); ++number) {
        ScriptLine line(text);
        if (line.IsEmpty() || line.Text().starts_with('#')) {
            continue;
        }
        try {
            steps.push_back(ReadStep(line, context));
        } catch (const UsageError& error) {
            throw UsageError(name + ":" + std::to_string(number) + ": " + error.what());
        }
    }
    return steps;
}

std::string ScriptHelp() {
    constexpr int kColumn = 30;
    std::ostringstream help;
    help << "A script has one command in a line; what begins with # is a comment. Nothing is "
            "played\n"
            "when a line is wrong. Coordinates are pixels from the upper left corner.\n\n";
    for (const ScriptForm& form : ScriptForms()) {
        const std::string usage = std::string(form.m_Name) + " " + std::string(form.m_Arguments);
        help << "  " << std::left << std::setw(kColumn) << usage << form.m_Meaning << '\n';
    }
    help << "\nProperties, by name or number:";
    for (const Word& property : kPropertyWords) {
        help << ' ' << property.m_Name << '=' << property.m_Value;
    }
    help << "\n\nThe record has a line for each command with the status that the control returned, "
            "and\n"
            "indented below it a line for each event that listeners heard.\n";
    return help.str();
}
