#pragma once

#include "framework/interfaces/Unknown.h"

// Objects that read their content from files, and the host's settings: implemented by the host.

/// Selectors of GetContentState, whose value 0 means "not yet filled".
constexpr int32_t CONTENTSTATE_ARCHIVE = 1;
constexpr int32_t CONTENTSTATE_FILENAMES = 100;

/// An item or icon that reads its content from a file or folder.
struct IFileArchive : IUnknown {
    virtual int32_t SetFileName(IString* fileName) = 0;
    /// Loads or fills the content; negative when it cannot.
    virtual int32_t Populate() = 0;
    virtual int32_t GetContentState(int32_t selector, int32_t* value) = 0;
};

struct IFileNameCollection : IUnknown {
    virtual int32_t Populate() = 0;
    virtual int32_t GetContentState(int32_t selector, int32_t* value) = 0;
};

/// The capacity, in characters, of the buffer that ReadString fills.
constexpr int32_t REGISTRY_TEXT_CAPACITY = 256;

struct IRegistryEx : IUnknown {
    /// Reads a value, zero-terminated, into a cleared buffer of REGISTRY_TEXT_CAPACITY characters.
    virtual int32_t ReadString(const wchar_t* section, const wchar_t* key, wchar_t* buffer) = 0;
};
