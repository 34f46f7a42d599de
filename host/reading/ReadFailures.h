#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

/// What of a source could not be read, as lines for its user. All parts of a source share one,
/// since folders are read when they are opened. Used on one thread. Throws std::bad_alloc.
class ReadFailures {
public:
    /// Adds "cannot read WHAT: " and what the error number means; once, however often it is tried.
    void Add(const std::string& what, int error);

    /// The same for what is there and is wrong.
    void AddFault(const std::string& what, const std::string& fault);

    /// Drops what was wrong with it: it was read by now, or is being tried anew.
    void Drop(const std::string& what);

    bool IsEmpty() const { return m_Failures.empty(); }
    std::vector<std::string> Lines() const;

private:
    using Failure = std::pair<std::string, std::string>; ///< what, and what is wrong with it

    std::vector<Failure> m_Failures;
};
using ReadFailuresPtr = std::shared_ptr<ReadFailures>;
