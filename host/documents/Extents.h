#pragma once

#include <cstddef>
#include <vector>

/// Where a container, an object or an element, stands in a text, in bytes.
struct Extent {
    size_t m_Begin;
    size_t m_Inside; ///< where what is in it begins
    size_t m_End;    ///< and where that ends
};

constexpr size_t kLeastExtent = 512;

/// The containers of a text that are worth jumping over when the container around them is read. A
/// container is kept when it is not empty and has at least `least` bytes of its own, which are
/// those outside the kept containers in it. So there is at most one kept container for each `least`
/// bytes of the text. Whoever reads a container goes through its own bytes, and through less than
/// `least` bytes of each container directly in it, however deep that is.
class Extents {
public:
    explicit Extents(size_t least) : m_Least(least) {}

    size_t Least() const { return m_Least; }
    void SetLeast(size_t least) { m_Least = least; }

    // Told in the order of the text. They throw std::bad_alloc.
    void Open(size_t begin, size_t inside) { m_Open.push_back({begin, inside, 0, false}); }
    /// There is something in the innermost container.
    void Note();
    /// The innermost container ends.
    void Close(size_t end);
    /// The text is over; what is open reaches to its end. To be called before the questions.
    void Finish(size_t end);

    /// The first one that begins at or after a place; null when there is none.
    const Extent* From(size_t begin) const;

private:
    struct Opened {
        size_t m_Begin;
        size_t m_Inside;
        size_t m_Covered; ///< bytes in those that are kept
        bool m_IsNoted;
    };

    size_t m_Least;
    std::vector<Opened> m_Open;
    std::vector<Extent> m_Kept;
};
