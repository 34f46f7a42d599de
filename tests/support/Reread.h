#pragma once

#include "host/data/Rereading.h"
#include "host/folders/FolderWatch.h"

#include <fstream>
#include <string>

/// Reads a tree again in one turn.
inline bool RereadTree(ISuperCollection* root, RereadParts which = RereadParts::kAll) {
    return Rereading(root, which).GoOn(Turn());
}

/// How many folders the system watches for somebody.
inline int CountWatches(const FolderWatch& watch) {
    std::ifstream info("/proc/self/fdinfo/" + std::to_string(watch.News()));
    int count = 0;
    for (std::string line; std::getline(info, line);) {
        count += line.starts_with("inotify") ? 1 : 0;
    }
    return count;
}
