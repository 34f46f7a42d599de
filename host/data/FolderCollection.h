#pragma once

#include "framework/interfaces/TreeInterfaces.h"
#include "host/data/SuperCollection.h"

/// A collection with folders, which are told when their rows open and close: they look different.
class FolderCollection : public SuperCollectionBase {
public:
    int32_t SetItemFlags(int32_t index, int32_t flags) override {
        int32_t before = 0;
        GetItemFlags(index, &before);
        const int32_t status = SuperCollectionBase::SetItemFlags(index, flags);
        if (status >= 0 && ((before ^ flags) & NODE_EXPANDED) != 0) {
            TellItem(index, (flags & NODE_EXPANDED) != 0);
        }
        return status;
    }

protected:
    ~FolderCollection() = default;

private:
    void TellItem(int32_t index, bool isOpen) {
        SmartPtr<IUnknown> item;
        GetItem(index, item.Receive());
        if (const auto folder = Query<IHostOpenItem>(item.Get())) {
            folder->SetOpen(isOpen);
        }
    }
};
