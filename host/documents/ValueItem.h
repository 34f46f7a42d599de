#pragma once

#include "host/components/HostObject.h"
#include "host/drawing/DrawnItem.h"

/// What has nothing below it in a document, or the fault that ends one.
class ValueItem final : public HostObject<ValueItem, DrawnItem> {
public:
    static constexpr const char* kKind = "ValueItem";

    explicit ValueItem(ItemKind kind) { SetLook({kind}); }
};
