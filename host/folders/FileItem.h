#pragma once

#include "host/components/HostObject.h"
#include "host/drawing/DrawnItem.h"

/// A file in a folder.
class FileItem final : public HostObject<FileItem, DrawnItem, IHostFileItem> {
public:
    static constexpr const char* kKind = "FileItem";

    explicit FileItem(ItemLook look) { SetLook(look); }

    int32_t GetLook(ItemLook* look) override {
        *look = Look();
        return S_OK;
    }
};
