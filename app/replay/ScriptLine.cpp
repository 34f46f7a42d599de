#include "app/replay/ScriptLine.h"

#include "app/UsageError.h"
#include "host/text/Numbers.h"

#include <sstream>

namespace {

[[noreturn]] int32_t Refuse(const char* what, const std::string& word) {
    throw UsageError(std::string("not ") + what + ": " + word);
}

} // namespace

ScriptLine::ScriptLine(const std::string& text) {
    std::istringstream words(text);
    std::string word;
    while (words >> word) {
        m_Words.push_back(word);
    }
}

std::string ScriptLine::Text() const {
    std::string text;
    for (const std::string& word : m_Words) {
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

std::string ScriptLine::Take(const char* what) {
    if (m_Next == m_Words.size()) {
        throw UsageError(std::string(what) + " is missing");
    }
    return m_Words[m_Next++];
}

double ScriptLine::TakeNumber(const char* what) {
    const std::string word = Take(what);
    const auto number = ReadNumber(word);
    return number ? *number : Refuse(what, word);
}

int32_t ScriptLine::TakeInteger(const char* what, int32_t min, int32_t max) {
    const std::string word = Take(what);
    const auto number = ReadInteger(word);
    return number && *number >= min && *number <= max ? *number : Refuse(what, word);
}

int32_t ScriptLine::TakeWords(const char* what, std::span<const Word> words) {
    const std::string word = Take(what);
    const auto value = ReadWords(word, words);
    return value ? *value : Refuse(what, word);
}

int32_t ScriptLine::TakeWords(const char* what, std::span<const Word> words, int32_t otherwise) {
    return m_Next == m_Words.size() ? otherwise : TakeWords(what, words);
}

std::string ScriptLine::TakeRest(const char* what) {
    std::string rest = Take(what);
    while (m_Next < m_Words.size()) {
        rest += " " + m_Words[m_Next++];
    }
    return rest;
}

void ScriptLine::End() const {
    if (m_Next < m_Words.size()) {
        throw UsageError("too many words: " + m_Words[m_Next]);
    }
}
