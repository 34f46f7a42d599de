#include "app/commands/Commands.h"
#include "app/installation/ControlHost.h"
#include "app/settings/SettingsPage.h"
#include "framework/settings/ParameterTable.h"
#include "host/components/AnsweredInterfaces.h"
#include "host/settings/ParameterText.h"
#include "host/text/Text.h"

#include <iomanip>
#include <iostream>
#include <nlohmann/json.hpp>

namespace {

using Interfaces = std::map<std::string, IID>;

void PrintText(const Interfaces& interfaces, const std::vector<Setting>& settings) {
    std::cout << "Interfaces\n";
    for (const auto& [name, iid] : interfaces) {
        std::cout << "  " << name << '\n';
    }
    std::cout
        << "Parameters\n  number  name                   type    flags    range       value\n";
    for (const auto& [parameter, name, value] : settings) {
        const std::string range =
            std::to_string(parameter.m_Min) + ".." + std::to_string(parameter.m_Max);
        std::cout << "  " << std::left << std::setw(8) << parameter.m_Number << std::setw(22)
                  << name << ' ' << std::setw(8) << TypeName(parameter.m_Flags) << "0x" << std::hex
                  << std::setw(7) << parameter.m_Flags << std::dec << std::setw(12) << range
                  << value << '\n';
    }
}

/// A number where JSON has one for the value (it has none for "not a number"), else its text.
nlohmann::ordered_json JsonValue(const Setting& setting) {
    const int32_t flags = setting.m_Parameter.m_Flags;
    const auto number = nlohmann::ordered_json::parse(setting.m_Value, nullptr, false);
    const bool isNumber = TypeOf(flags) <= PROPTYPE_DOUBLE && !IsColor(flags) && number.is_number();
    return isNumber ? number : nlohmann::ordered_json(setting.m_Value);
}

void PrintJson(const Interfaces& interfaces, const std::vector<Setting>& settings) {
    nlohmann::ordered_json info;
    info["interfaces"] = nlohmann::ordered_json::array();
    for (const auto& [name, iid] : interfaces) {
        info["interfaces"].push_back(name);
    }
    info["parameters"] = nlohmann::ordered_json::array();
    for (const Setting& setting : settings) {
        const auto& [number, flags, min, max] = setting.m_Parameter;
        info["parameters"].push_back(
            {{"number", number}, {"name", setting.m_Name}, {"type", TypeName(flags)},
                {"flags", flags}, {"min", min}, {"max", max}, {"value", JsonValue(setting)}});
    }
    std::cout << info.dump(2) << '\n';
}

std::string Shown(const std::filesystem::path& path) {
    std::error_code error;
    const bool exists = std::filesystem::exists(path, error);
    return ToPrintable(Refer(ToWide(path.string()))) + (exists ? "" : " (missing)");
}

void PrintPaths() {
    const Installation installation = FindInstallation();
    const std::filesystem::path share = installation.m_Host / "share";
    std::cout << "module     " << Shown(installation.m_Module) << "\ncomponents "
              << Shown(installation.m_Host) << "\nicons      " << Shown(share / "_icons")
              << "\nnames      " << Shown(share / "_strings") << "\nsearched  ";
    for (const std::filesystem::path& folder : installation.m_Searched) {
        std::cout << ' ' << Shown(folder);
    }
    std::cout << '\n';
}

} // namespace

void RunInfo(const InfoOptions& options) {
    if (options.m_Paths) {
        PrintPaths();
        return;
    }
    const ControlHost host;
    const auto tree = host.CreateTree();
    const auto print = options.m_AsJson ? &PrintJson : &PrintText;
    print(InterfacesOf(tree.Get()), SettingsPage(tree.Get()).List());
}
