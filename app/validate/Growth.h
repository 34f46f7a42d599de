#pragma once

#include "app/validate/Check.h"

/// Whether the process runs under AddressSanitizer or its like, which keeps some memory of its own
/// for each library that is loaded.
bool IsSanitized();

/// What the whole process keeps for good when something is done again and again. Of memory it is
/// what a hundred turns add, as the median over all hundreds but the first: an allocator that keeps
/// a block for later, as it now and then does, shows in one hundred only; a leak shows in each.
/// Files are counted in all after the first hundred, for they run out.
class Growth {
public:
    Growth(int turns, const std::function<void()>& turn);

    std::string Figure() const;
    /// A finding for a block of memory, so many bytes or a page that each turn keeps, and for a
    /// hundred files that stay open. A turn is called `what`. Where turns allocate much, malloc
    /// puts more and more aside: it takes a while until it has enough.
    void Judge(Trial& trial, const std::string& what, int64_t bytesOfATurn = 1) const;

private:
    int64_t m_Blocks; ///< of operator new
    int64_t m_Memory; ///< bytes in use by malloc
    int64_t m_Mapped; ///< pages
    int64_t m_Files;  ///< that are open
};
