#pragma once

#include <memory>
#include <string>
#include <vector>

/// What of a source could not be read, as lines for its user. All parts of a source share one,
/// since folders are read when they are opened. Used on one thread.
class ReadFailures {
public:
    /// Adds "cannot read WHAT: " and what the error number means; once, however often it is tried.
    /// Throws std::bad_alloc.
    void Add(const std::string& what, int error);

    /// The same for what is there and is wrong.
    void AddFault(const std::string& what, const std::string& fault);

    const std::vector<std::string>& Lines() const { return m_Lines; }

private:
    std::vector<std::string> m_Lines;
};
using ReadFailuresPtr = std::shared_ptr<ReadFailures>;
