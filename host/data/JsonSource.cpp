#include "host/data/JsonSource.h"

#include "host/data/TextItems.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <vector>

namespace {

using Json = nlohmann::json;

/// Builds the tree while the parser reports, one level of its own for each object or array that is
/// open.
class Builder final : public nlohmann::json_sax<Json> {
public:
    explicit Builder(TextBranch& root) { m_Levels.push_back({SmartPtr(&root), false, {}, 0}); }

    bool null() override { return AddValue("null"); }
    bool boolean(bool value) override { return AddValue(value ? "true" : "false"); }
    bool number_integer(number_integer_t value) override { return AddValue(Json(value).dump()); }
    bool number_unsigned(number_unsigned_t value) override { return AddValue(Json(value).dump()); }
    /// As it is written: what a double cannot hold is shown all the same.
    bool number_float(number_float_t, const string_t& written) override {
        return AddValue(written);
    }
    bool string(string_t& value) override {
        return AddValue(Json(value).dump(-1, ' ', false, Json::error_handler_t::replace));
    }
    bool binary(binary_t&) override { return true; }
    bool key(string_t& name) override {
        m_Levels.back().m_Key = name;
        return true;
    }
    bool start_object(std::size_t) override { return Open(false); }
    bool start_array(std::size_t) override { return Open(true); }
    bool end_object() override { return Close("{}"); }
    bool end_array() override { return Close("[]"); }
    bool parse_error(std::size_t position, const std::string&,
        const nlohmann::detail::exception& error) override {
        m_FaultPosition = position;
        const std::string what = error.what();
        const size_t reason = what.find(": ");
        m_Fault = what.substr(reason == std::string::npos ? 0 : reason + 2);
        return false;
    }

    const std::string& Fault() const { return m_Fault; }
    size_t FaultPosition() const { return m_FaultPosition; }

private:
    struct Level {
        SmartPtr<TextBranch> m_Branch;
        bool m_IsArray;
        std::string m_Key;
        size_t m_Index;
    };

    /// The name of what comes next; "" for the text's only value.
    std::string TakeName() {
        Level& level = m_Levels.back();
        return level.m_IsArray ? std::to_string(level.m_Index++) : std::exchange(level.m_Key, {});
    }
    bool AddValue(const std::string& value) {
        const bool isNamed = m_Levels.size() > 1;
        const std::string name = TakeName();
        m_Levels.back().m_Branch->AppendLeaf(isNamed ? name + ": " + value : value);
        return true;
    }
    /// The outermost object or array is the root itself.
    bool Open(bool isArray) {
        SmartPtr<TextBranch> branch = m_Levels.back().m_Branch;
        if (m_Levels.size() > 1) {
            branch = TextBranch::Make();
            m_Levels.back().m_Branch->Append(TakeName(), branch->Identity());
        }
        m_Levels.push_back({std::move(branch), isArray, {}, 0});
        return true;
    }
    bool Close(const char* empty) {
        const bool isEmpty = m_Levels.back().m_Branch->IsEmpty() && m_Levels.size() > 2;
        if (isEmpty) {
            m_Levels.back().m_Branch->AppendLeaf(empty);
        }
        m_Levels.pop_back();
        return true;
    }

    std::vector<Level> m_Levels;
    std::string m_Fault;
    size_t m_FaultPosition = 0;
};

/// Reads one value into a branch; what is wrong, with its line, which is `line` at the beginning.
std::string ReadValue(std::string_view text, size_t line, TextBranch& branch) {
    Builder builder(branch);
    if (Json::sax_parse(text, &builder)) {
        return {};
    }
    const auto end = text.begin() + ptrdiff_t(std::min(builder.FaultPosition(), text.size()));
    line += static_cast<size_t>(std::count(text.begin(), end, '\n'));
    return "line " + std::to_string(line) + ": " + builder.Fault();
}

bool IsBlank(std::string_view text) {
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

std::string_view FirstLine(std::string_view text) {
    return text.substr(0, text.find('\n'));
}

/// Whether the first line is a value and more follows.
bool IsLines(std::string_view text) {
    const std::string_view line = FirstLine(text);
    return !IsBlank(text.substr(line.size())) && !IsBlank(line) && Json::accept(line);
}

/// A row for each line.
std::string ReadLines(std::string_view text, TextBranch& root) {
    std::string fault;
    for (size_t number = 1; !text.empty() && fault.empty(); ++number) {
        const std::string_view line = FirstLine(text);
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        if (!IsBlank(line)) {
            const auto branch = TextBranch::Make();
            root.Append(std::to_string(number), branch->Identity());
            fault = ReadValue(line, number, *branch.Get());
        }
    }
    return fault;
}

} // namespace

SmartPtr<ISuperCollection> ReadJson(std::string_view text, std::string& fault) {
    const auto root = TextBranch::Make();
    fault = IsLines(text) ? ReadLines(text, *root.Get()) : ReadValue(text, 1, *root.Get());
    if (!fault.empty()) {
        root->AppendLeaf(fault);
    }
    return SmartPtr<ISuperCollection>(root.Get());
}
