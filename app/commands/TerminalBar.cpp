#include "app/commands/TerminalBar.h"

#include "app/input/Milliseconds.h"
#include "host/text/Text.h"

#include <algorithm>
#include <filesystem>

namespace {

constexpr int64_t kPatience = 1000; // milliseconds
constexpr size_t kBarLength = 20;   // characters
constexpr size_t kNameLength = 40;

/// Short enough for the line to be one on any terminal.
std::string NameOf(const std::string& path) {
    std::wstring name = ToWide(std::filesystem::path(path).filename().string());
    if (name.size() > kNameLength) {
        name = L"\u2026" + name.substr(name.size() - kNameLength);
    }
    return ToPrintable(Refer(name));
}

std::string BarOf(const ReadState& state) {
    if (state.m_Whole == 0) {
        return "";
    }
    const double share = static_cast<double>(state.m_Done) / static_cast<double>(state.m_Whole);
    const auto length = std::min(static_cast<size_t>(kBarLength * share), kBarLength);
    return '[' + std::string(length, '#') + std::string(kBarLength - length, ' ') + "] ";
}

} // namespace

TerminalBar::TerminalBar(const std::string& path, std::ostream& terminal, bool isTerminal)
    : m_Terminal(terminal), m_IsTerminal(isTerminal), m_Name(NameOf(path)),
      m_Begin(Milliseconds()) {}

TerminalBar::~TerminalBar() {
    if (!m_Shown.empty()) {
        m_Terminal << "\r\033[K" << std::flush;
    }
}

bool TerminalBar::Advance(const ReadState& state) {
    if (m_IsTerminal && Milliseconds() - m_Begin > kPatience) {
        const std::string text = BarOf(state) + ToText(state) + "  " + m_Name;
        if (text != m_Shown) {
            m_Terminal << "\r\033[K" << text << std::flush;
            m_Shown = text;
        }
    }
    return true;
}
