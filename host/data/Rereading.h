#pragma once

#include "host/data/ItemWalk.h"
#include "host/data/Turn.h"

#include <vector>

enum class RereadParts {
    kAll,
    kChanged ///< by what their watch has heard, and what was read beside the window's thread
};

/// Brings all that was read of a tree up to what is behind it now, from the root down. Of folders
/// what is gone is removed, what is new comes where it sorts, and what stays keeps its flag words
/// and what was read below it; a root that is gone is empty. What is being read beside the window's
/// thread is taken as far as it is there. What was never read stays so, and what never changes
/// stays as it is. It is done in turns, between which rows may be opened and closed.
class Rereading {
public:
    Rereading(ISuperCollection* root, RereadParts which);

    /// Reads on until the turn or all is over, at least one part. True when something changed.
    /// Throws when memory runs out.
    bool GoOn(const Turn& turn);
    bool IsOver() const { return m_Waiting.empty(); }
    RereadParts Which() const { return m_Which; }

private:
    struct Part {
        SmartPtr<ISuperCollection> m_Collection;
        Place m_Above; ///< the item that it is; no collection for the root
    };

    void AppendFilled(ISuperCollection* collection);

    RereadParts m_Which;
    std::vector<Part> m_Waiting;
};
