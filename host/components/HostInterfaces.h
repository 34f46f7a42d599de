#pragma once

#include "framework/interfaces/CollectionVersion.h"
#include "framework/interfaces/ComponentInterfaces.h"

// Interfaces between the host's own parts, modules and programs; the framework does not know them.

/// Changes the component registry. Answered by "GlobalComponentCollection".
struct IHostComponents : IUnknown {
    /// Makes `description` the entry of that name, in place of the previous one.
    virtual int32_t Register(tagREFString name, IComponentString* description) = 0;
    /// E_INVALIDARG when there is no such entry.
    virtual int32_t Unregister(tagREFString name) = 0;
};

/// The texts of an entry made with ISuperCollection::AddEntry, answered by its item.
struct IHostEntry : IUnknown {
    /// Text 0 is the name, 1 the component, 2 the owner; null when it was given as null.
    virtual int32_t GetText(int32_t number, IString** text) = 0;
};

/// Tells which number a collection's version is, so that collections of one number know each other.
struct IHostVersionSource : ICollectionVersion {
    virtual const void* GetSource() = 0;
};

struct ItemLook;

/// A file or folder as an item of a folder's collection.
struct IHostFileItem : IUnknown {
    virtual int32_t GetLook(ItemLook* look) = 0;
};

/// An item that shows whether its row is open.
struct IHostOpenItem : IUnknown {
    /// Told by the collection that holds it, as the flag word says.
    virtual int32_t SetOpen(bool isOpen) = 0;
};

/// An item whose label ends with its value.
struct IHostValueItem : IUnknown {
    /// Where in the label, as UTF-8, the value begins.
    virtual int32_t GetValuePlace(uint32_t* place) = 0;
};

/// A collection that can be brought up to what is behind it now.
struct IHostRereadable : IUnknown {
    /// Reads it again, and not what is below. Items that stay, by name and look, keep their flag
    /// words and what was read below them; new ones get `newFlags`. What cannot be read is empty
    /// then. What never changes takes what was read beside the window's thread. S_FALSE when
    /// nothing changed, and when that is not known yet: what is read beside the window's thread
    /// stays as it is, and counts as changed when that is over. After a failure all is as it was,
    /// or it may be filled again.
    virtual int32_t ReadAgain(int32_t newFlags) = 0;
    /// S_OK when its watch heard of a change, or when what was read beside the window's thread is
    /// there, so that reading it again has something to do; else S_FALSE.
    virtual int32_t IsChanged() = 0;
};

/// A folder of the file system.
struct IHostFolder : IUnknown {
    /// Where it is, as it was opened.
    virtual int32_t GetPath(IString** path) = 0;
};

/// What the text renderer reads from a text style.
struct IHostRenderStyle : IUnknown {
    virtual int32_t GetColor() = 0; ///< 0xRRGGBB
    virtual int32_t GetSize() = 0;  ///< in pixels
};

/// A parameter on a property page, beside its texts.
struct HostParameter {
    int32_t m_Number;
    int32_t m_Flags; ///< the flags word that Inquire answers
    int32_t m_Min;
    int32_t m_Max; ///< values are limited to the range when this is greater than m_Min
};

/// Shows and changes the parameters of an object by texts. Answered by the settings page that a
/// control's page list names. A parameter is addressed by its index in the page, counted from 0 in
/// the order of the numbers.
///
/// An edit is pending until Apply hands it to the object, and Cancel takes back what Apply did:
///
///     page->SetObject(control);
///     page->SetText(0, Refer(L"30")); // shown by GetText, nothing else happens
///     page->Apply();                  // the control has it
///     page->Cancel();                 // the control has what it had before
struct IHostPropertyPage : IUnknown {
    /// Lists the parameters of an object, and remembers their values for Cancel. The page holds the
    /// object until it is given another one or null; edits of the previous one are dropped.
    /// E_NOINTERFACE for an object without numbered parameters; the page is empty then.
    virtual int32_t SetObject(IUnknown* object) = 0;
    virtual int32_t GetCount(int32_t* count) = 0;
    virtual int32_t GetParameter(int32_t index, HostParameter* parameter) = 0;
    /// The display name; the decimal number when the object's string table has none.
    virtual int32_t GetName(int32_t index, IString** name) = 0;
    /// The pending edit, or the value that the object has now. An object is "set" or "not set", an
    /// action is "action".
    virtual int32_t GetText(int32_t index, IString** text) = 0;
    /// What the setting takes, in words. That may be less than the object lets through: a host
    /// keeps its users from what shows nothing.
    virtual int32_t GetHint(int32_t index, IString** hint) = 0;
    /// Whether SetText would take a text.
    virtual int32_t Test(int32_t index, tagREFString text) = 0;
    /// Makes a text the pending edit: a decimal number or a hexadecimal one after 0x, a colour also
    /// as '#RRGGBB', or any text, as the type wants it. Any text asks for an action. E_INVALIDARG
    /// for what the parameter does not take, and for objects; a previous edit stays then.
    virtual int32_t SetText(int32_t index, tagREFString text) = 0;
    /// Hands all pending edits to the object, those that it refuses too, and then asks it to show
    /// itself anew. The first failure is the result; no edit is pending afterwards.
    virtual int32_t Apply() = 0;
    /// Drops the pending edits and gives every parameter that was applied the value back that it
    /// had when the page was given the object. An action may have changed any parameter: after one,
    /// all of them get theirs back. What others changed meanwhile and the page did not touch stays.
    virtual int32_t Cancel() = 0;
};

#define HOST_IDENTIFIER(name)                                                                      \
    template <>                                                                                    \
    inline const IID& IdentifierOf<name>() {                                                       \
        static const IID identifier = __IIDOfc(#name);                                             \
        return identifier;                                                                         \
    }
HOST_IDENTIFIER(IHostComponents)
HOST_IDENTIFIER(IHostEntry)
HOST_IDENTIFIER(IHostFileItem)
HOST_IDENTIFIER(IHostFolder)
HOST_IDENTIFIER(IHostOpenItem)
HOST_IDENTIFIER(IHostPropertyPage)
HOST_IDENTIFIER(IHostRenderStyle)
HOST_IDENTIFIER(IHostRereadable)
HOST_IDENTIFIER(IHostValueItem)
HOST_IDENTIFIER(IHostVersionSource)
#undef HOST_IDENTIFIER
