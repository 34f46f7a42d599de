#include "host/data/CollectionVersion.h"

#include "framework/interfaces/CollectionInterfaces.h"
#include "framework/runtime/SmartPtr.h"

namespace {

uint64_t gVersion = 1;
int32_t gBlind = 0;

} // namespace

int32_t CollectionVersion::GetVersion(uint64_t* version) {
    if (!version) {
        return E_POINTER;
    }
    *version = gVersion;
    return gBlind == 0 ? S_OK : E_FAIL;
}

const void* CollectionVersion::GetSource() {
    return &gVersion;
}

void CollectionVersion::Advance() {
    ++gVersion;
}

bool CollectionVersion::Covers(IUnknown* item) {
    if (Query<IUINode>(item) || Query<ICollectionMoniker>(item)) {
        return false;
    }
    if (!Query<ISuperCollection>(item)) {
        return true;
    }
    const auto source = Query<IHostVersionSource>(item);
    return source && source->GetSource() == &gVersion;
}

void CollectionVersion::AddBlind(int32_t change) {
    gBlind += change;
}
