#include "host/settings/PropertyPage.h"

#include "framework/interfaces/ObjectInfo.h"
#include "framework/settings/DisplayNames.h"
#include "framework/settings/ParameterTable.h"
#include "framework/support/REFString.h"
#include "host/components/CreatableString.h"
#include "host/text/Text.h"

namespace {

/// An object may claim any range of numbers; no more than these are asked for.
constexpr int64_t kMostNumbers = 65536;

std::string NameOf(const DisplayNames& names, int32_t number) {
    const std::string name = ToUtf8(CREFString(names.FindByText(number).Get()));
    return name.empty() ? std::to_string(number) : name;
}

/// Parameters as the object tells them, in the order of their numbers.
std::vector<HostParameter> ParametersOf(IUIPropInterrogate* object) {
    int32_t first = 0;
    int32_t last = 0;
    std::vector<HostParameter> parameters;
    if (object->ParameterRange(PROPID_ALL, &first, &last) < 0) {
        return parameters;
    }
    const int64_t end = std::min(int64_t{last}, first + kMostNumbers - 1);
    for (int64_t each = first; each <= end; ++each) {
        HostParameter parameter{static_cast<int32_t>(each), 0, 0, 0};
        const bool isNumber = parameter.m_Number != PROPID_ALL;
        parameter.m_Flags = isNumber ? object->Inquire(parameter.m_Number, nullptr) : E_INVALIDARG;
        if (parameter.m_Flags >= 0) {
            object->ParameterRange(parameter.m_Number, &parameter.m_Min, &parameter.m_Max);
            parameters.push_back(parameter);
        }
    }
    return parameters;
}

/// The range of a parameter to which the component itself sets none, though there is nothing to
/// see outside of it.
struct SensibleRange {
    const wchar_t* m_Component;
    int32_t m_Number;
    int32_t m_Min;
    int32_t m_Max;
};
constexpr SensibleRange kSensible[] = {{L"UITree", 4, 8, 512}}; // the row height, in pixels

HostParameter Sensible(HostParameter parameter, IUnknown* object) {
    tagREFString component{};
    if (const auto info = Query<IObjectInfo>(object)) {
        info->GetName(0, &component);
    }
    for (const auto& [name, number, min, max] : kSensible) {
        if (number == parameter.m_Number && ViewOf(component) == name) {
            parameter.m_Min = min;
            parameter.m_Max = max;
        }
    }
    return parameter;
}

/// Nothing else tells the viewers of an object that a parameter has changed.
void ShowAnew(IUnknown* object) {
    if (const auto refreshable = Query<IUIRefreshableObject>(object)) {
        refreshable->Refresh(0);
    }
}

} // namespace

ParameterValue PropertyPage::Target::Read(const HostParameter& parameter) const {
    ParameterValue value;
    if (m_Objects && IsObjectValue(parameter.m_Flags)) {
        m_Objects->InquireEx(parameter.m_Number, value.m_Object.Receive());
    } else {
        m_Numbers->Inquire(parameter.m_Number, &value.m_Number);
    }
    return value;
}

int32_t PropertyPage::Target::Write(
    const HostParameter& parameter, const ParameterValue& value) const {
    return m_Objects && IsObjectValue(parameter.m_Flags)
               ? m_Objects->ControlEx(parameter.m_Number, value.m_Object.Get())
               : m_Numbers->Control(parameter.m_Number, value.m_Number);
}

std::vector<PropertyPage::Line> PropertyPage::LinesOf(const Target& target) {
    std::vector<Line> lines;
    const DisplayNames names(nullptr, target.m_Numbers.Get());
    for (const HostParameter& parameter : ParametersOf(target.m_Numbers.Get())) {
        lines.push_back({parameter, Sensible(parameter, target.m_Numbers.Get()),
            NameOf(names, parameter.m_Number), target.Read(parameter)});
    }
    return lines;
}

int32_t PropertyPage::SetObject(IUnknown* object) {
    return Guarded([&] {
        Target target{Query<IUIPropInterrogate>(object), Query<IUIPropInterrogateEx>(object)};
        std::vector<Line> lines = target.m_Numbers ? LinesOf(target) : std::vector<Line>();
        // What is let go may look back at the page, which has the new object by then.
        std::swap(m_Target, target);
        m_Lines.swap(lines);
        return m_Target.m_Numbers || !object ? S_OK : E_NOINTERFACE;
    });
}

PropertyPage::Line* PropertyPage::Find(int32_t index) {
    const auto position = static_cast<size_t>(index);
    return index >= 0 && position < m_Lines.size() ? &m_Lines[position] : nullptr;
}

int32_t PropertyPage::GetCount(int32_t* count) {
    if (!count) {
        return E_POINTER;
    }
    *count = static_cast<int32_t>(m_Lines.size());
    return S_OK;
}

int32_t PropertyPage::GetParameter(int32_t index, HostParameter* parameter) {
    if (!parameter) {
        return E_POINTER;
    }
    const Line* line = Find(index);
    *parameter = line ? line->m_Parameter : HostParameter{};
    return line ? S_OK : E_INVALIDARG;
}

int32_t PropertyPage::GetName(int32_t index, IString** name) {
    const Line* line = Find(index);
    if (name) {
        *name = nullptr;
    }
    return line ? HandOutString(line->m_Name, name) : E_INVALIDARG;
}

int32_t PropertyPage::GetText(int32_t index, IString** text) {
    if (!text) {
        return E_POINTER;
    }
    *text = nullptr;
    const Line* line = Find(index);
    if (!line) {
        return E_INVALIDARG;
    }
    return Guarded([&] {
        const HostParameter parameter = line->m_Parameter;
        const ParameterValue value = line->m_Edit ? *line->m_Edit : m_Target.Read(parameter);
        return HandOutString(ToText(parameter.m_Flags, value), text);
    });
}

int32_t PropertyPage::GetHint(int32_t index, IString** hint) {
    const Line* line = Find(index);
    if (hint) {
        *hint = nullptr;
    }
    return line ? Guarded([&] { return HandOutString(HintOf(line->m_Sensible), hint); })
                : E_INVALIDARG;
}

int32_t PropertyPage::Test(int32_t index, tagREFString text) {
    const Line* line = Find(index);
    return Guarded([&] {
        const bool isTaken = line && FromText(line->m_Sensible, text);
        return isTaken ? S_OK : E_INVALIDARG;
    });
}

int32_t PropertyPage::SetText(int32_t index, tagREFString text) {
    Line* line = Find(index);
    if (!line) {
        return E_INVALIDARG;
    }
    return Guarded([&] {
        auto value = FromText(line->m_Sensible, text);
        if (!value) {
            return E_INVALIDARG;
        }
        line->m_Edit = std::move(value);
        return S_OK;
    });
}

void PropertyPage::NoteApplied(size_t index) {
    m_Lines[index].m_IsApplied = true;
    if (TypeOf(m_Lines[index].m_Parameter.m_Flags) == PROPTYPE_ACTION) {
        for (Line& line : m_Lines) {
            line.m_IsApplied = true;
        }
    }
}

int32_t PropertyPage::ApplyLine(const Target& target, size_t index) {
    const auto edit = std::exchange(m_Lines[index].m_Edit, std::nullopt);
    if (!edit) {
        return S_FALSE;
    }
    NoteApplied(index);
    const HostParameter parameter = m_Lines[index].m_Parameter;
    return std::min(target.Write(parameter, *edit), S_OK);
}

int32_t PropertyPage::RestoreLine(const Target& target, size_t index) {
    Line& line = m_Lines[index];
    line.m_Edit.reset();
    const HostParameter parameter = line.m_Parameter;
    const bool isAction = TypeOf(parameter.m_Flags) == PROPTYPE_ACTION;
    if (!std::exchange(line.m_IsApplied, false) || isAction) {
        return S_FALSE;
    }
    const ParameterValue original = line.m_Original;
    return std::min(target.Write(parameter, original), S_OK);
}

int32_t PropertyPage::WriteLines(
    int32_t (PropertyPage::*write)(const Target& target, size_t index)) {
    // The object's listeners may give the page another object, or let go of both.
    const SmartPtr<IUnknown> alive(Identity());
    const Target target = m_Target;
    int32_t result = S_OK;
    bool isWritten = false;
    for (size_t i = 0; i < m_Lines.size(); ++i) {
        const int32_t status = (this->*write)(target, i);
        isWritten |= status != S_FALSE;
        if (result >= 0 && status < 0) {
            result = status;
        }
    }
    if (isWritten) {
        ShowAnew(target.m_Numbers.Get());
    }
    return result;
}

int32_t PropertyPage::Apply() {
    return Guarded([&] { return WriteLines(&PropertyPage::ApplyLine); });
}

int32_t PropertyPage::Cancel() {
    return Guarded([&] { return WriteLines(&PropertyPage::RestoreLine); });
}
