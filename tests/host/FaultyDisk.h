#pragma once

#include <functional>

/// What happens at the n-th change of the disk.
enum class Fault {
    kKill,     ///< the process is killed, a write half done
    kFailOnce, ///< it fails
    kFail,     ///< it fails like all that follow
};

enum class Ending { kUntouched, kSavedAnyway, kFailed, kKilled };

/// Runs `save` in a process of its own, for n = 1, 2 and so on until it ends before its n-th change
/// of the disk. Those are the writes, the syncs, the renamings and removals of the program and of
/// everything loaded, SQLite included, and what calls PassPoint. `save` answers whether it saved.
void WithEveryFault(Fault fault, const std::function<void()>& prepare,
    const std::function<bool()>& save, const std::function<void(Ending)>& check);

void PassPoint();
