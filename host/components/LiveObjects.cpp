#include "host/components/LiveObjects.h"

#include "host/components/ObjectCount.h"

#include <dlfcn.h>
#include <memory>

namespace {

using Counts = std::map<std::string, int32_t>;

void Collect(void* context, const char* kind, int32_t count) {
    (*static_cast<Counts*>(context))[kind] += count;
}

void CollectFromModule(const char* file, Counts& counts) {
    const std::unique_ptr<void, int (*)(void*)> library(
        dlopen(file, RTLD_NOW | RTLD_NOLOAD), [](void* handle) { return dlclose(handle); });
    if (!library) {
        return;
    }
    const auto report =
        reinterpret_cast<decltype(&ReportLiveObjects)>(dlsym(library.get(), kReportFunction));
    if (report) {
        report(&Collect, &counts);
    }
}

} // namespace

std::map<std::string, int32_t> LiveObjects() {
    Counts counts;
    VisitObjectCounts(&Collect, &counts);
    CollectFromModule("./CollectionsEx.so", counts);
    CollectFromModule("./Collections.so", counts);
    return counts;
}
