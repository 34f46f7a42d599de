#pragma once

#include "framework/interfaces/Export.h"

#include <atomic>
#include <cstdint>

/// The count of living objects of one kind. Every counter of a program or module stands in one
/// list, so that all of them can be reported. Counters are never destroyed.
class ObjectCount {
public:
    /// `kind` must be a literal.
    explicit ObjectCount(const char* kind);
    ObjectCount(const ObjectCount&) = delete;
    ObjectCount& operator=(const ObjectCount&) = delete;

    void Add(int32_t change) { m_Count += change; }

    const char* Kind() const { return m_Kind; }
    int32_t Count() const { return m_Count; }
    const ObjectCount* Next() const { return m_Next; }

private:
    const char* m_Kind;
    std::atomic<int32_t> m_Count{0};
    const ObjectCount* m_Next = nullptr;
};

/// Receives one kind and how many objects of it are alive (never 0).
using ObjectCountVisitor = void (*)(void* context, const char* kind, int32_t count);

/// Reports the living objects of the program or module that it is called in.
void VisitObjectCounts(ObjectCountVisitor visitor, void* context);

/// The same, as the host's modules export it.
extern "C" MODULE_EXPORT void ReportLiveObjects(ObjectCountVisitor visitor, void* context);
constexpr const char* kReportFunction = "ReportLiveObjects";
