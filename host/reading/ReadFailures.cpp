#include "host/reading/ReadFailures.h"

#include <algorithm>
#include <system_error>

void ReadFailures::Add(const std::string& what, int error) {
    AddFault(what, std::generic_category().message(error));
}

void ReadFailures::AddFault(const std::string& what, const std::string& fault) {
    Failure failure(what, fault);
    if (std::find(m_Failures.begin(), m_Failures.end(), failure) == m_Failures.end()) {
        m_Failures.push_back(std::move(failure));
    }
}

void ReadFailures::Drop(const std::string& what) {
    std::erase_if(m_Failures, [&](const Failure& each) { return each.first == what; });
}

std::vector<std::string> ReadFailures::Lines() const {
    std::vector<std::string> lines;
    for (const auto& [what, fault] : m_Failures) {
        lines.emplace_back("cannot read ").append(what).append(": ").append(fault);
    }
    return lines;
}
