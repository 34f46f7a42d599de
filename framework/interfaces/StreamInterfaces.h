#pragma once

#include "framework/interfaces/Unknown.h"

// The host's document streams: implemented by the host, called by modules.

/// Used only through QueryInterface, for the streams below and IString.
struct IDataStream : IUnknown {};

/// A stream of named entries and numbered sub-folders. Modes are 0.
struct IFolderStream : IUnknown {
    virtual int32_t CreateFolder(IString* name, int32_t mode, IFolderStream** folder) = 0;
    /// Stores `size` raw bytes.
    virtual int32_t WriteData(IString* entry, const void* data, int32_t size, int32_t mode) = 0;
    virtual int32_t WriteString(IString* entry, IString* value) = 0;
    /// Stores an object that the stream persists; `object` may be null.
    virtual int32_t WriteObject(IString* entry, IUnknown* object, int32_t mode) = 0;
    /// Negative when the entry is missing.
    virtual int32_t ReadData(IString* entry, void* data, int32_t size, int32_t mode) = 0;
    /// Fills the given empty creatable string.
    virtual int32_t ReadString(IString* entry, IString* value) = 0;
    /// Opens the sub-folder whose position from 0 the variant holds; negative when there is none.
    virtual int32_t OpenFolder(IVariant* key, int32_t mode, IFolderStream** folder) = 0;
    /// Creates the stored object again.
    virtual int32_t ReadObject(IString* entry, IUnknown** object, int32_t mode) = 0;
};

struct IXMLStream : IUnknown {
    /// Writes one element with the value as its content. The other arguments are 0.
    virtual int32_t WriteElement(IString* name, int32_t, IString* value, int32_t) = 0;
};

/// Saves and loads an object's settings. Implemented by components.
struct IDataPersist : IUnknown {
    /// Both do nothing and answer S_OK when the stream is null or of a kind they do not know.
    virtual int32_t Save(IDataStream* stream, int32_t flags) = 0;
    virtual int32_t Load(IDataStream* stream, int32_t flags) = 0;
};
