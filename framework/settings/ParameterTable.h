#pragma once

#include "framework/runtime/Object.h"

#include <span>

/// Value types: the low four bits of a parameter's flags word.
constexpr uint32_t PROPTYPE_MASK = 0xF;
constexpr uint32_t PROPTYPE_NONE = 0;   ///< a number to those who store it; not to be read
constexpr uint32_t PROPTYPE_BYTE = 1;   ///< unsigned 8-bit
constexpr uint32_t PROPTYPE_SHORT = 2;  ///< signed 16-bit
constexpr uint32_t PROPTYPE_LONG = 3;   ///< 32-bit
constexpr uint32_t PROPTYPE_FLOAT = 4;  ///< carried as its bits
constexpr uint32_t PROPTYPE_DOUBLE = 5; ///< carried as the bits of its single-precision value
constexpr uint32_t PROPTYPE_STRING = 6; ///< a SmartPtr<IString> field
constexpr uint32_t PROPTYPE_OBJECT = 7; ///< a SmartPtr<IUnknown> field
constexpr uint32_t PROPTYPE_ACTION = 8; ///< reads as 0; the component overrides its Control

/// Flag bits above the type.
constexpr uint32_t PROPFLAG_COLOR = 0x20;
constexpr uint32_t PROPFLAG_FILENAME = 0x100;
constexpr uint32_t PROPFLAG_TRANSIENT = 0x4000000; ///< never persisted

/// Addresses the table as a whole.
constexpr int32_t PROPID_ALL = 0x2000000;

constexpr uint16_t PROPKIND_RANGE = 0;
constexpr uint16_t PROPKIND_ENUMERATION = 2;

/// One parameter of a component.
struct PROPParameter {
    int32_t m_ID;
    uint32_t m_Flags; ///< value type and flag bits
    void* m_Value;    ///< the object's field, which outlives the record
    uint16_t m_Kind;
    union {
        int32_t m_Min;           ///< PROPKIND_RANGE
        IUnknown* m_Enumeration; ///< PROPKIND_ENUMERATION; one reference, the record's
    };
    int32_t m_Max;

    uint32_t Type() const { return m_Flags & PROPTYPE_MASK; }
    bool IsFileName() const { return (m_Flags & PROPFLAG_FILENAME) != 0; }
    bool IsTransient() const { return (m_Flags & PROPFLAG_TRANSIENT) != 0; }
};
static_assert(offsetof(PROPParameter, m_Value) == 8);
static_assert(sizeof(void*) != 4 || sizeof(PROPParameter) == 24);

/// The parameters of an object, in the order of their registration. Holds everything of
/// IUIPropInterrogateImpl that does not depend on the component class. Results are those of
/// IUIPropInterrogateEx; an unknown number answers E_INVALIDARG everywhere.
class ParameterTable {
public:
    ParameterTable() = default;
    ParameterTable(const ParameterTable&) = delete;
    ParameterTable& operator=(const ParameterTable&) = delete;
    ~ParameterTable();

    /// Appends a record; the array grows by `growth` entries. E_FAIL when memory runs out.
    int32_t Add(int32_t growth, const PROPParameter& parameter);

    int32_t Inquire(int32_t id, int32_t* value) const;
    int32_t Control(int32_t id, int32_t value);
    int32_t Range(int32_t id, int32_t* minimum, int32_t* maximum) const;
    int32_t Enumeration(int32_t id, IUnknown** enumeration) const;
    int32_t InquireEx(int32_t id, IUnknown** value) const;
    /// `owner`'s lock is held while a string or object field is replaced.
    int32_t ControlEx(ObjectBase& owner, int32_t id, IUnknown* value);

    /// The records in the order of their registration.
    std::span<const PROPParameter* const> Records() const;
    /// The first record of that number; null when there is none.
    const PROPParameter* Find(int32_t id) const;

private:
    bool RangeOfNumbers(int32_t& minimum, int32_t& maximum) const;

    PROPParameter** m_ParamList = nullptr;
    int32_t m_ParamCount = 0;
    int32_t m_ParamCapacity = 0;
};
