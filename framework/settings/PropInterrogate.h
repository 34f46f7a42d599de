#pragma once

#include "framework/settings/FolderPersistence.h"
#include "framework/settings/XMLPersistence.h"

/// Implements numbered parameters for a component class T (derived from ObjectBase), which
/// registers its fields with AddParameter during its final construction and may override Inquire
/// and Control to add parameters that live elsewhere. N is the growth step of the table.
template <class T, class Interface, long N>
class IUIPropInterrogateImpl : public Interface, protected ParameterTable {
public:
    int32_t Inquire(int32_t id, int32_t* value) override {
        return ParameterTable::Inquire(id, value);
    }
    int32_t Control(int32_t id, int32_t value) override {
        return ParameterTable::Control(id, value);
    }
    int32_t ParameterRange(int32_t id, int32_t* minimum, int32_t* maximum) override {
        return ParameterTable::Range(id, minimum, maximum);
    }
    int32_t ParameterEnumeration(int32_t id, IUnknown** enumeration) override {
        return ParameterTable::Enumeration(id, enumeration);
    }
    int32_t InquireEx(int32_t id, IUnknown** value) override {
        return ParameterTable::InquireEx(id, value);
    }
    int32_t ControlEx(int32_t id, IUnknown* value) override {
        return ParameterTable::ControlEx(static_cast<T&>(*this), id, value);
    }

    // Stored settings. Each answers S_OK in every case; the last argument is not used.
    virtual int32_t UIPropInterrogate_SaveFolderStream(
        INamedCollection* strings, IFolderStream* stream, int32_t /*flags*/) {
        return SaveToFolders(*this, this, strings, stream);
    }
    virtual int32_t UIPropInterrogate_LoadFolderStream(IFolderStream* stream, int32_t /*flags*/) {
        return LoadFromFolders(*this, this, stream);
    }
    virtual int32_t UIPropInterrogate_SaveXML(
        INamedCollection* strings, IDataStream* stream, int32_t /*flags*/) {
        return SaveToXML(*this, this, strings, stream);
    }
    virtual int32_t UIPropInterrogate_LoadXML(
        INamedCollection* strings, IDataStream* stream, int32_t /*flags*/) {
        return LoadFromXML(*this, this, strings, stream);
    }

protected:
    /// Registers a field, which must outlive the object's interfaces. The number is not tested for
    /// duplicates; the first record of a number is the one that answers.
    int32_t AddParameter(
        int32_t id, uint32_t flags, void* field, int32_t minimum = 0, int32_t maximum = 0) {
        return ParameterTable::Add(static_cast<int32_t>(N), {.m_ID = id,
                                                                .m_Flags = flags,
                                                                .m_Value = field,
                                                                .m_Kind = PROPKIND_RANGE,
                                                                .m_Min = minimum,
                                                                .m_Max = maximum});
    }
};
