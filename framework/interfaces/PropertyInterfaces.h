#pragma once

#include "framework/interfaces/Unknown.h"

/// A component's settings as numbered parameters. Implemented by components (and by "UIDefault").
struct IUIPropInterrogate : IUnknown {
    /// Answers the parameter's flags word on success; with a null `value` that is all it does.
    virtual int32_t Inquire(int32_t id, int32_t* value) = 0;
    virtual int32_t Control(int32_t id, int32_t value) = 0;
    /// Either bound may be null; both are 0 when the parameter has no range.
    virtual int32_t ParameterRange(int32_t id, int32_t* minimum, int32_t* maximum) = 0;
    virtual int32_t ParameterEnumeration(int32_t id, IUnknown** enumeration) = 0;
};

/// The parameters of "UIDefault", the host's component of default sizes; both are in pixels.
constexpr int32_t UIDEFAULT_ROWHEIGHT = 3;
constexpr int32_t UIDEFAULT_TEXTSIZE = 10;

struct IUIPropInterrogateEx : IUIPropInterrogate {
    /// The parameter as a string, an object or a new variant, with one reference.
    virtual int32_t InquireEx(int32_t id, IUnknown** value) = 0;
    /// The caller keeps its own reference to `value`.
    virtual int32_t ControlEx(int32_t id, IUnknown* value) = 0;
};

/// The settings of a component as a whole: what stands in the table of IUIPropInterrogateEx behind
/// its own operations when the component is built on IUIPropInterrogateImpl. There is no identifier
/// for it: the pointer that such a component hands out for IID_IUIPropInterrogateEx is one of
/// these. Any other component's is not.
///
/// All answer S_OK. `strings` has the names of the parameters, and is the component's own string
/// table when null; `flags` is not used.
struct IUIPropInterrogatePersist : IUIPropInterrogateEx {
    /// Stores every persistent parameter in a sub-folder, which is named by its number when the
    /// table has no name for it.
    virtual int32_t UIPropInterrogate_SaveFolderStream(
        INamedCollection* strings, IFolderStream* stream, int32_t flags) = 0;
    /// Sets what the sub-folders hold for parameters of the component; all else stays.
    virtual int32_t UIPropInterrogate_LoadFolderStream(IFolderStream* stream, int32_t flags) = 0;
    /// Writes every persistent parameter that is no object as an element named by the table, to a
    /// stream that answers IXMLStream. Nothing is written without a table.
    virtual int32_t UIPropInterrogate_SaveXML(
        INamedCollection* strings, IDataStream* stream, int32_t flags) = 0;
    /// Sets the parameters whose elements are in the text of a stream that answers IXMLStream, and
    /// IString for the text. Nothing is read without a table.
    virtual int32_t UIPropInterrogate_LoadXML(
        INamedCollection* strings, IDataStream* stream, int32_t flags) = 0;
};

/// Names the pages of a component's settings dialog.
struct IUIPropertyPageSpecify : IUnknown {
    /// `pages` receives a new list: the collection's ISuperCollection interface, handed out through
    /// this pointer type. The page number and `reserved` are not used.
    virtual int32_t GetPages(int32_t page, INamedCollection** pages, IUnknown** reserved) = 0;
};
