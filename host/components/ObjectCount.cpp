#include "host/components/ObjectCount.h"

#include "framework/interfaces/Identifiers.h"

namespace {

std::atomic<const ObjectCount*> gFirst{nullptr};

// Every program and module that has host objects needs the identifiers before its first object.
[[maybe_unused]] const bool gIdentifiersReady = (InitializeIdentifiers(), true);

} // namespace

ObjectCount::ObjectCount(const char* kind) : m_Kind(kind), m_Next(gFirst.load()) {
    while (!gFirst.compare_exchange_weak(m_Next, this)) {
    }
}

void VisitObjectCounts(ObjectCountVisitor visitor, void* context) {
    for (const ObjectCount* counter = gFirst; counter; counter = counter->Next()) {
        if (counter->Count() != 0) {
            visitor(context, counter->Kind(), counter->Count());
        }
    }
}
