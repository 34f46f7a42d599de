#include "app/validate/Candidate.h"
#include "framework/settings/DisplayNames.h"
#include "framework/support/REFString.h"
#include "host/components/CreatableString.h"
#include "host/text/Text.h"

#include <algorithm>
#include <set>

// Numbered parameters: which there are, what they take, and what they make of what they do not.

namespace {

using Parameters = IUIPropInterrogateEx;

constexpr int64_t kLeast = INT32_MIN;
constexpr int64_t kGreatest = INT32_MAX;

std::string Named(int32_t number) {
    return "parameter " + std::to_string(number);
}

void UnknownNumbers(Trial& trial, Parameters& object, int32_t first, int32_t last) {
    for (const int64_t each : {int64_t{first} - 1, int64_t{last} + 1, kLeast, kGreatest}) {
        const auto number = static_cast<int32_t>(std::clamp(each, kLeast, kGreatest));
        if (number == first || number == last) {
            continue; // it has one at the end of all numbers
        }
        int32_t value = 0;
        SmartPtr<IUnknown> answer;
        const std::string name = "the unknown " + Named(number);
        trial.At("with " + name);
        trial.Expect(object.Inquire(number, &value) < 0 && object.Inquire(number, nullptr) < 0 &&
                         object.InquireEx(number, answer.Receive()) < 0,
            name + " is answered");
        trial.Expect(object.Control(number, 1) < 0 && object.ControlEx(number, nullptr) < 0,
            name + " is set");
        trial.Expect(object.ParameterRange(number, &value, &value) < 0, name + " has a range");
    }
}

void Describes(Trial& trial, Parameters& object, const Parameter& parameter) {
    const std::string name = Named(parameter.m_Number);
    int32_t value = 0;
    const int32_t flags = object.Inquire(parameter.m_Number, &value);
    const uint32_t type = static_cast<uint32_t>(parameter.m_Flags) & PROPTYPE_MASK;
    const bool hasLong = type <= PROPTYPE_DOUBLE || type == PROPTYPE_ACTION;
    trial.Expect(hasLong ? flags == parameter.m_Flags : flags < 0,
        name + " answers other flags with its value than without");
    trial.Expect(
        parameter.m_Min <= parameter.m_Max, name + " has a range that ends before it begins");
    int32_t bound = ~parameter.m_Min; // another number
    trial.Expect(object.ParameterRange(parameter.m_Number, &bound, nullptr) >= 0 &&
                     bound == parameter.m_Min &&
                     object.ParameterRange(parameter.m_Number, nullptr, &bound) >= 0 &&
                     bound == parameter.m_Max,
        name + " answers its bounds only together");
    SmartPtr<IUnknown> enumeration;
    const int32_t status = object.ParameterEnumeration(parameter.m_Number, enumeration.Receive());
    trial.Expect(status >= 0 || !enumeration, name + " hands out what it says it has not");
}

void Numbers(Trial& trial) {
    Stage stage(trial.TheSubject());
    stage.Load();
    const Candidate candidate(stage);
    auto* object = candidate.Need<Parameters>(trial, "numbered parameters");
    const auto all = ParametersOf(object);
    int32_t count = 0;
    object->Inquire(PROPID_ALL, &count);
    trial.Expect(static_cast<size_t>(count) == all.size(),
        "it says " + std::to_string(count) + " parameters and has " + std::to_string(all.size()));
    if (!all.empty()) {
        UnknownNumbers(trial, *object, all.front().m_Number, all.back().m_Number);
    }
    for (const Parameter& parameter : all) {
        trial.At("with " + Named(parameter.m_Number));
        Describes(trial, *object, parameter);
    }
    trial.Measure(std::to_string(all.size()) + " parameters");
}

void Names(Trial& trial) {
    Stage stage(trial.TheSubject());
    stage.Load();
    const Candidate candidate(stage);
    auto* object = candidate.Need<Parameters>(trial, "numbered parameters");
    const DisplayNames names(nullptr, object);
    if (!names.Exist()) {
        trial.Skip("the host has no names for the component");
    }
    std::set<std::string> known;
    for (const Parameter& parameter : ParametersOf(object)) {
        const auto name = names.FindByNumber(parameter.m_Number);
        const std::string text = ToUtf8(CREFString(name.Get()));
        if (parameter.IsPersistent() &&
            parameter.m_Flags != static_cast<int32_t>(PROPTYPE_ACTION)) {
            trial.Expect(!text.empty(), Named(parameter.m_Number) + " has no name");
            trial.Expect(known.insert(text).second, "two parameters are called " + text);
        }
    }
    trial.Measure(std::to_string(known.size()) + " names");
}

int32_t ValueOf(Parameters& object, int32_t number) {
    int32_t value = 0;
    object.Inquire(number, &value);
    return value;
}

/// A value within the range, or any small one where there is none, is kept as it is.
void Takes(Trial& trial, Parameters& object, const Parameter& parameter, int32_t value) {
    const bool isTaken = object.Control(parameter.m_Number, value) >= 0;
    trial.Expect(isTaken && ValueOf(object, parameter.m_Number) == value,
        Named(parameter.m_Number) + " does not take " + std::to_string(value));
}

void Ranges(Trial& trial) {
    Stage stage(trial.TheSubject());
    stage.Load();
    const Candidate candidate(stage);
    auto* object = candidate.Need<Parameters>(trial, "numbered parameters");
    int sets = 0;
    for (const Parameter& parameter : ParametersOf(object)) {
        if (!parameter.IsWhole()) {
            continue;
        }
        const int32_t first = ValueOf(*object, parameter.m_Number);
        trial.Expect(
            !parameter.HasRange() || (first >= parameter.m_Min && first <= parameter.m_Max),
            Named(parameter.m_Number) + " begins with " + std::to_string(first) +
                ", outside its own range");
        const int32_t after = parameter.m_Max == INT32_MAX ? INT32_MIN : parameter.m_Max + 1;
        for (const int32_t beyond : {INT32_MIN, -1, after, INT32_MAX}) {
            trial.At("with " + std::to_string(beyond) + " for " + Named(parameter.m_Number));
            object->Control(parameter.m_Number, beyond); // taken, limited or refused
            Takes(trial, *object, parameter, parameter.m_Min);
            Takes(trial, *object, parameter, parameter.HasRange() ? parameter.m_Max : 1);
            sets += 3;
        }
        Takes(trial, *object, parameter, first);
    }
    trial.Measure(std::to_string(sets) + " values set");
}

void WrongTypes(Trial& trial) {
    Stage stage(trial.TheSubject());
    stage.Load();
    const Candidate candidate(stage);
    auto* object = candidate.Need<Parameters>(trial, "numbered parameters");
    const auto all = ParametersOf(object);
    const auto before = ValuesOf(object, all);
    const auto text = CreatableString::Make(L"12");
    for (const Parameter& parameter : all) {
        if (parameter.IsObject()) {
            SmartPtr<IUnknown> own;
            SmartPtr<IUnknown> other;
            object->InquireEx(parameter.m_Number, own.Receive());
            const bool isTaken = object->ControlEx(parameter.m_Number, text->Identity()) >= 0;
            object->InquireEx(parameter.m_Number, other.Receive());
            trial.Expect(other == (isTaken ? text->Identity() : own.Get()),
                Named(parameter.m_Number) + " does not keep what it takes, or else what it has");
            object->ControlEx(parameter.m_Number, own.Get());
        } else if (parameter.IsNumber()) {
            trial.Expect(object->ControlEx(parameter.m_Number, text->Identity()) < 0,
                Named(parameter.m_Number) + ", a number, takes a text");
        }
    }
    trial.Expect(ValuesOf(object, all) == before, "what is refused changes a value");
}

} // namespace

std::span<const Check> ParameterChecks() {
    static constexpr Check checks[] = {
        {"parameters.numbers", "Every parameter describes itself, and unknown numbers are refused.",
            "AddParameter in FinalConstruct; overridden Inquire, Control and ParameterRange",
            &Numbers},
        {"parameters.names", "Every parameter that is stored has a name of its own.",
            "share/_strings/<component>.ini of the host", &Names},
        {"parameters.range",
            "A parameter begins in its range and takes what is in it, also after what is beyond; "
            "that "
            "may be taken, limited or refused.",
            "the field's first value, the bounds given to AddParameter, the type of the field",
            &Ranges},
        {"parameters.types", "What is not of a parameter's type is refused and changes nothing.",
            "ControlEx: the type of the record", &WrongTypes},
    };
    return checks;
}
