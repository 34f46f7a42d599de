#pragma once

#include <chrono>
#include <functional>
#include <string>

/// How a child process ended.
struct ChildEnd {
    bool m_IsDone = false; ///< the body came to its end
    std::string m_Reason;  ///< why not: a signal, a status, the time limit
    std::string m_Place;   ///< the last text of the kind kPlace, or its beginning
    std::string m_Output;  ///< the end of what it printed, on standard output and error
};

/// The kind of a text that says where the body is. It replaces the one before and is kept for the
/// end, in memory that parent and child share: it may be told thousands of times.
inline constexpr char kPlace = '@';

/// Tells the parent something: a kind, which is no '.', and a text without zeros.
using Tell = std::function<void(char kind, const std::string& text)>;

/// Runs `body` in a child process, which is ended after the limit; `hear` gets what the body tells,
/// in order, also when the child does not come to its end. Throws std::system_error when there is
/// no child to be had.
ChildEnd RunChild(
    const std::function<void(const Tell&)>& body, const Tell& hear, std::chrono::seconds limit);
