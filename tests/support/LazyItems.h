#pragma once

#include "framework/Interfaces.h"
#include "host/SuperCollection.h"

/// A folder that fills itself with one item when asked to, and counts how often it was.
class LazyFolder final : public HostObject<LazyFolder, SuperCollectionBase, IFileArchive> {
public:
    static constexpr const char* kKind = "LazyFolder";

    int32_t SetFileName(IString*) override { return E_FAIL; }
    int32_t Populate() override {
        ++m_Filled;
        Append("filled", SuperCollection::Make()->Identity());
        return S_OK;
    }
    int32_t GetContentState(int32_t selector, int32_t* value) override {
        *value = selector == CONTENTSTATE_ARCHIVE ? m_Filled : -1;
        return S_OK;
    }

    int32_t m_Filled = 0;
};
