#include "app/validate/Candidate.h"

#include <algorithm>

namespace {

constexpr int kSpare = 1000;
constexpr int64_t kMostNumbers = 100'000;

} // namespace

Candidate::Candidate(SmartPtr<IUnknown> object) : m_Object(object.Detach()) {
    for (int i = 0; i < kSpare; ++i) {
        m_Object->AddRef();
    }
}

Candidate::~Candidate() {
    for (int i = 0; i < 2 * kSpare && m_Object->Release() > 0; ++i) {
    }
}

void* Candidate::Find(const IID& iid) const {
    void* found = QueryObject(m_Object, iid);
    if (found) {
        static_cast<IUnknown*>(found)->Release(); // there are spare ones
    }
    return found;
}

bool Parameter::IsNumber() const {
    const uint32_t type = static_cast<uint32_t>(m_Flags) & PROPTYPE_MASK;
    return type >= PROPTYPE_BYTE && type <= PROPTYPE_DOUBLE;
}

bool Parameter::IsWhole() const {
    return IsNumber() && (static_cast<uint32_t>(m_Flags) & PROPTYPE_MASK) <= PROPTYPE_LONG;
}

bool Parameter::IsObject() const {
    return (static_cast<uint32_t>(m_Flags) & PROPTYPE_MASK) == PROPTYPE_OBJECT;
}

bool Parameter::IsPersistent() const {
    return (static_cast<uint32_t>(m_Flags) & PROPFLAG_TRANSIENT) == 0;
}

int32_t Parameter::Other(int32_t value) const {
    if (!IsWhole()) {
        return std::bit_cast<int32_t>(std::bit_cast<float>(value) == 0.5F ? 0.25F : 0.5F);
    }
    if (HasRange()) {
        return value == m_Min ? m_Max : m_Min;
    }
    return (value & 0x7F) == 0x7F ? 1 : (value & 0x7F) + 1;
}

std::vector<Parameter> ParametersOf(IUIPropInterrogate* object) {
    std::vector<Parameter> found;
    int32_t first = 0;
    int32_t last = -1;
    if (object->ParameterRange(PROPID_ALL, &first, &last) < 0) {
        return found;
    }
    const int64_t end = std::min<int64_t>(last, first + kMostNumbers);
    for (int64_t number = first; number <= end; ++number) {
        Parameter parameter{
            .m_Number = static_cast<int32_t>(number), .m_Flags = 0, .m_Min = 0, .m_Max = 0};
        const int32_t status =
            object->ParameterRange(parameter.m_Number, &parameter.m_Min, &parameter.m_Max);
        parameter.m_Flags = object->Inquire(parameter.m_Number, nullptr);
        if (status >= 0 && parameter.m_Flags >= 0) {
            found.push_back(parameter);
        }
    }
    return found;
}

std::vector<int32_t> ValuesOf(IUIPropInterrogate* object, const std::vector<Parameter>& all) {
    std::vector<int32_t> values;
    for (const Parameter& parameter : all) {
        int32_t value = 0;
        if (parameter.IsNumber()) {
            object->Inquire(parameter.m_Number, &value);
        }
        values.push_back(value);
    }
    return values;
}
