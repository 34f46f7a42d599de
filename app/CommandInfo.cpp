#include "app/Commands.h"
#include "app/ControlInfo.h"
#include "app/TreeView.h"

#include <iomanip>
#include <iostream>
#include <nlohmann/json.hpp>

namespace {

void PrintText(
    const std::vector<std::string>& interfaces, const std::vector<ParameterInfo>& parameters) {
    std::cout << "Interfaces\n";
    for (const std::string& name : interfaces) {
        std::cout << "  " << name << '\n';
    }
    std::cout << "Parameters\n  number  type    flags    range       value\n";
    for (const ParameterInfo& parameter : parameters) {
        const std::string range =
            std::to_string(parameter.m_Min) + ".." + std::to_string(parameter.m_Max);
        std::cout << "  " << std::left << std::setw(8) << parameter.m_Id << std::setw(8)
                  << parameter.m_Type << "0x" << std::hex << std::setw(7) << parameter.m_Flags
                  << std::dec << std::setw(12) << range << parameter.m_Value << '\n';
    }
}

/// A number where JSON has one for the value (it has none for "not a number"), else its text.
nlohmann::ordered_json JsonValue(const ParameterInfo& parameter) {
    const auto number = nlohmann::ordered_json::parse(parameter.m_Value, nullptr, false);
    const bool isNumber = parameter.m_IsNumber && number.is_number();
    return isNumber ? number : nlohmann::ordered_json(parameter.m_Value);
}

void PrintJson(
    const std::vector<std::string>& interfaces, const std::vector<ParameterInfo>& parameters) {
    nlohmann::ordered_json info;
    info["interfaces"] = interfaces;
    info["parameters"] = nlohmann::ordered_json::array();
    for (const ParameterInfo& parameter : parameters) {
        info["parameters"].push_back({{"number", parameter.m_Id}, {"type", parameter.m_Type},
            {"flags", parameter.m_Flags}, {"min", parameter.m_Min}, {"max", parameter.m_Max},
            {"value", JsonValue(parameter)}});
    }
    std::cout << info.dump(2) << '\n';
}

} // namespace

void RunInfo(bool asJson) {
    const ControlHost host;
    const auto tree = host.CreateTree();
    const auto print = asJson ? &PrintJson : &PrintText;
    print(InterfacesOf(tree.Get()), ParametersOf(tree.Get()));
}
