#include "framework/settings/ParameterTable.h"

#include "framework/runtime/OutParameter.h"
#include "framework/support/HostStrings.h"

#include <algorithm>
#include <memory>
#include <type_traits>

namespace {

template <class Field>
Field& FieldOf(const PROPParameter& parameter) {
    return *static_cast<Field*>(parameter.m_Value);
}

/// Calls `visit` with a numeric parameter's field as what it is; false for every other type.
template <class Visit>
bool VisitNumber(const PROPParameter& parameter, Visit&& visit) {
    switch (parameter.Type()) {
    case PROPTYPE_BYTE:
        visit(FieldOf<uint8_t>(parameter));
        return true;
    case PROPTYPE_SHORT:
        visit(FieldOf<int16_t>(parameter));
        return true;
    case PROPTYPE_LONG:
        visit(FieldOf<int32_t>(parameter));
        return true;
    case PROPTYPE_FLOAT:
        visit(FieldOf<float>(parameter));
        return true;
    case PROPTYPE_DOUBLE:
        visit(FieldOf<double>(parameter));
        return true;
    default:
        return false;
    }
}

/// The number as a long carries it: floating-point values as single-precision bits.
template <class Number>
int32_t ToLong(Number number) {
    if constexpr (std::is_floating_point_v<Number>) {
        return std::bit_cast<int32_t>(static_cast<float>(number));
    } else {
        return number;
    }
}

template <class Number>
Number FromLong(int32_t value) {
    if constexpr (std::is_floating_point_v<Number>) {
        return std::bit_cast<float>(value);
    } else {
        return static_cast<Number>(value);
    }
}

int32_t FlagsOf(const PROPParameter& parameter) {
    return static_cast<int32_t>(parameter.m_Flags);
}

} // namespace

ParameterTable::~ParameterTable() {
    for (int32_t i = 0; i < m_ParamCount; ++i) {
        const std::unique_ptr<PROPParameter> parameter(m_ParamList[i]);
        if (parameter->m_Kind == PROPKIND_ENUMERATION) {
            Adopt(parameter->m_Enumeration).Reset();
        }
    }
    delete[] m_ParamList;
}

int32_t ParameterTable::Add(int32_t growth, const PROPParameter& parameter) {
    if (m_ParamCount >= m_ParamCapacity) {
        const int32_t capacity = m_ParamCapacity + growth;
        auto** grown = new (std::nothrow) PROPParameter*[capacity];
        if (!grown) {
            return E_FAIL;
        }
        std::copy(m_ParamList, m_ParamList + m_ParamCount, grown);
        delete[] m_ParamList;
        m_ParamList = grown;
        m_ParamCapacity = capacity;
    }
    auto* added = new (std::nothrow) PROPParameter(parameter);
    if (!added) {
        return E_FAIL;
    }
    m_ParamList[m_ParamCount++] = added;
    return S_OK;
}

std::span<const PROPParameter* const> ParameterTable::Records() const {
    return {m_ParamList, static_cast<size_t>(m_ParamCount)};
}

const PROPParameter* ParameterTable::Find(int32_t id) const {
    const auto records = Records();
    const auto found = std::find_if(records.begin(), records.end(),
        [id](const PROPParameter* parameter) { return parameter->m_ID == id; });
    return found == records.end() ? nullptr : *found;
}

int32_t ParameterTable::Inquire(int32_t id, int32_t* value) const {
    if (id == PROPID_ALL) {
        Store(value, m_ParamCount);
        return value ? S_OK : E_POINTER;
    }
    const PROPParameter* parameter = Find(id);
    if (!parameter) {
        return E_INVALIDARG;
    }
    if (value) {
        const bool number = VisitNumber(*parameter, [&](auto field) { *value = ToLong(field); });
        if (!number && parameter->Type() != PROPTYPE_ACTION) {
            return E_FAIL;
        }
        if (!number) {
            *value = 0;
        }
    }
    return FlagsOf(*parameter);
}

int32_t ParameterTable::Control(int32_t id, int32_t value) {
    const PROPParameter* parameter = Find(id);
    if (!parameter) {
        return E_INVALIDARG;
    }
    VisitNumber(*parameter, [&]<class Number>(Number& field) { field = FromLong<Number>(value); });
    return S_OK;
}

bool ParameterTable::RangeOfNumbers(int32_t& minimum, int32_t& maximum) const {
    const auto byNumber = [](const PROPParameter* first, const PROPParameter* second) {
        return first->m_ID < second->m_ID;
    };
    const auto records = Records();
    if (records.empty()) {
        return false;
    }
    const auto [least, greatest] = std::minmax_element(records.begin(), records.end(), byNumber);
    minimum = (*least)->m_ID;
    maximum = (*greatest)->m_ID;
    return true;
}

int32_t ParameterTable::Range(int32_t id, int32_t* minimum, int32_t* maximum) const {
    int32_t least = 0;
    int32_t greatest = 0;
    int32_t status = S_OK;
    if (id == PROPID_ALL) {
        status = RangeOfNumbers(least, greatest) ? S_OK : E_FAIL;
    } else if (const auto* parameter = Find(id); parameter && parameter->m_Kind == PROPKIND_RANGE) {
        least = parameter->m_Min;
        greatest = parameter->m_Max;
    } else {
        status = E_INVALIDARG;
    }
    Store(minimum, least);
    Store(maximum, greatest);
    return status;
}

int32_t ParameterTable::Enumeration(int32_t id, IUnknown** enumeration) const {
    if (!enumeration) {
        return E_POINTER;
    }
    *enumeration = nullptr;
    const PROPParameter* parameter = Find(id);
    if (!parameter || parameter->m_Kind != PROPKIND_ENUMERATION) {
        return E_INVALIDARG;
    }
    *enumeration = SmartPtr(parameter->m_Enumeration).Detach();
    return S_OK;
}

int32_t ParameterTable::InquireEx(int32_t id, IUnknown** value) const {
    const PROPParameter* parameter = Find(id);
    if (value) {
        *value = nullptr;
    }
    if (!parameter) {
        return E_INVALIDARG;
    }
    if (!value) {
        return FlagsOf(*parameter);
    }
    switch (parameter->Type()) {
    case PROPTYPE_STRING:
        *value = SmartPtr(FieldOf<SmartPtr<IString>>(*parameter)).Detach();
        return FlagsOf(*parameter);
    case PROPTYPE_OBJECT:
        *value = SmartPtr(FieldOf<SmartPtr<IUnknown>>(*parameter)).Detach();
        return FlagsOf(*parameter);
    case PROPTYPE_DOUBLE: {
        auto variant = Adopt(CREFString::CreateVariant());
        if (!variant) {
            return E_FAIL;
        }
        variant->SetDouble(FieldOf<double>(*parameter));
        *value = variant.Detach();
        return FlagsOf(*parameter);
    }
    default:
        return E_FAIL;
    }
}

int32_t ParameterTable::ControlEx(ObjectBase& owner, int32_t id, IUnknown* value) {
    const PROPParameter* parameter = Find(id);
    if (!parameter) {
        return E_INVALIDARG;
    }
    const SmartPtr<IUnknown> alive(&owner); // what is released may hold its last reference
    const SmartPtr<IUnknown> kept(value);   // which may be held by the field only
    switch (parameter->Type()) {
    case PROPTYPE_STRING: {
        const ObjectGuard guard(owner);
        auto& field = FieldOf<SmartPtr<IString>>(*parameter);
        field.Reset(); // whoever asks while the old one goes finds none
        field = Query<IString>(value);
        return S_OK;
    }
    case PROPTYPE_OBJECT: {
        const ObjectGuard guard(owner);
        auto& field = FieldOf<SmartPtr<IUnknown>>(*parameter);
        field.Reset();
        field = value;
        return S_OK;
    }
    case PROPTYPE_DOUBLE: {
        const auto variant = Query<IVariant>(value);
        if (!variant) {
            return E_FAIL;
        }
        FieldOf<double>(*parameter) = variant->GetDouble();
        return S_OK;
    }
    default:
        return E_FAIL;
    }
}
