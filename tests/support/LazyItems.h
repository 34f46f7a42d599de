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

/// A leaf that gathers file names when asked to.
class LazyNames final : public HostObject<LazyNames, IFileNameCollection> {
public:
    static constexpr const char* kKind = "LazyNames";

    int32_t Populate() override { return ++m_Filled; }
    int32_t GetContentState(int32_t selector, int32_t* value) override {
        *value = selector == CONTENTSTATE_FILENAMES ? m_Filled : -1;
        return E_FAIL; // of no interest
    }

    int32_t m_Filled = 0;
};
