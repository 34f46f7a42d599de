#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// The beginning of a label that a user types. What is typed after a pause begins anew.
class TypeAhead {
public:
    /// A pause ends what was typed, in milliseconds.
    static constexpr int64_t kPause = 1000;

    /// Takes what was typed, at a time in milliseconds.
    void Add(std::wstring_view text, int64_t time);
    /// Whether what is typed now goes on with something.
    bool IsPending(int64_t time) const;

    /// What labels begin with. One letter again and again stands for itself once, and goes from one
    /// label to the next.
    std::wstring_view Prefix() const;
    /// Whether the row that is selected may be the one that is looked for.
    bool MayStay() const { return Prefix().size() > 1; }

private:
    std::wstring m_Typed;
    int64_t m_Time = 0; ///< of the last letter
};
