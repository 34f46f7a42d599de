#include "host/data/ReadFailures.h"

#include <algorithm>
#include <system_error>

void ReadFailures::Add(const std::string& what, int error) {
    std::string line = "cannot read " + what + ": " + std::generic_category().message(error);
    if (std::find(m_Lines.begin(), m_Lines.end(), line) == m_Lines.end()) {
        m_Lines.push_back(std::move(line));
    }
}
