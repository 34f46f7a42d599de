#include "host/reading/ReadFailures.h"

#include <algorithm>
#include <system_error>

void ReadFailures::Add(const std::string& what, int error) {
    AddFault(what, std::generic_category().message(error));
}

void ReadFailures::AddFault(const std::string& what, const std::string& fault) {
    std::string line = "cannot read " + what + ": " + fault;
    if (std::find(m_Lines.begin(), m_Lines.end(), line) == m_Lines.end()) {
        m_Lines.push_back(std::move(line));
    }
}
