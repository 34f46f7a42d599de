#pragma once

#include "bench/Stage.h"

#include <functional>

/// A line of the table: what the control does, and the least that it can cost. Both are measured in
/// turn, so that the machine's own changes of speed meet both.
struct Work {
    std::string m_Name;
    double m_Wanted; ///< microseconds; 0 for no aim
    std::function<SmartPtr<ISuperCollection>()> m_MakeTree;
    std::function<void(Stage&)> m_Prepare; ///< before each of the two, and not measured
    std::function<void(Stage&)> m_Ours;
    std::function<void(Stage&)> m_Floor;
};

/// Has the work measured, by Google Benchmark.
void Measure(const Work& work);

// One function for each subject.
void AddRepaints(Source source, Shape shape, int32_t most);
void AddQueries(Source source, Shape shape, int32_t most);
void AddOpening(Source source);
void AddMemory(Source source);
void AddSettings();

/// Draws so many frames of a flat tree, for who counts instructions.
void DrawFrames(Vouched vouched, int32_t rows, int32_t frames);
