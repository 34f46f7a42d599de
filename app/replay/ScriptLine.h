#pragma once

#include "app/input/Words.h"

#include <limits>
#include <vector>

/// The words of one line of a script, taken one after the other. What is missing or wrong is a
/// UsageError that says which word it is, by `what` it stands for.
class ScriptLine {
public:
    explicit ScriptLine(const std::string& text);

    bool IsEmpty() const { return m_Words.empty(); }
    /// The line, single-spaced.
    std::string Text() const;

    std::string Take(const char* what);
    double TakeNumber(const char* what);
    int32_t TakeInteger(const char* what, int32_t min = std::numeric_limits<int32_t>::min(),
        int32_t max = std::numeric_limits<int32_t>::max());
    int32_t TakeWords(const char* what, std::span<const Word> words);
    /// The same for a word that may be left out.
    int32_t TakeWords(const char* what, std::span<const Word> words, int32_t otherwise);
    /// All words that are left.
    std::string TakeRest(const char* what);
    /// Fails when a word is left.
    void End() const;

private:
    std::vector<std::string> m_Words;
    size_t m_Next = 0;
};
