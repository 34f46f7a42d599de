#pragma once

#include "host/components/HostObject.h"
#include "host/settings/ParameterText.h"

#include <string>
#include <vector>

/// The component "UIPropPages.UIPropInterrogatePropPage": the settings page for every component
/// with numbered parameters. It draws nothing: whoever shows it asks for the texts.
class PropertyPage final : public HostObject<PropertyPage, IHostPropertyPage> {
public:
    static constexpr const char* kKind = "PropertyPage";

    int32_t SetObject(IUnknown* object) override;
    int32_t GetCount(int32_t* count) override;
    int32_t GetParameter(int32_t index, HostParameter* parameter) override;
    int32_t GetName(int32_t index, IString** name) override;
    int32_t GetText(int32_t index, IString** text) override;
    int32_t GetHint(int32_t index, IString** hint) override;
    int32_t Test(int32_t index, tagREFString text) override;
    int32_t SetText(int32_t index, tagREFString text) override;
    int32_t Apply() override;
    int32_t Cancel() override;

private:
    /// The object's two interfaces; the second is null when it has numbers only.
    struct Target {
        SmartPtr<IUIPropInterrogate> m_Numbers;
        SmartPtr<IUIPropInterrogateEx> m_Objects;

        ParameterValue Read(const HostParameter& parameter) const;
        int32_t Write(const HostParameter& parameter, const ParameterValue& value) const;
    };
    struct Line {
        HostParameter m_Parameter;
        HostParameter m_Sensible; ///< the same with the range that users may choose from
        std::string m_Name;
        ParameterValue m_Original; ///< when the page was given the object
        std::optional<ParameterValue> m_Edit = {};
        bool m_IsApplied = false;
    };

    static std::vector<Line> LinesOf(const Target& target);
    Line* Find(int32_t index);
    void NoteApplied(size_t index);
    int32_t ApplyLine(const Target& target, size_t index);
    int32_t RestoreLine(const Target& target, size_t index);
    /// Calls one of the two for every line, then has the object shown anew if any of them wrote.
    int32_t WriteLines(int32_t (PropertyPage::*write)(const Target& target, size_t index));

    Target m_Target;
    std::vector<Line> m_Lines;
};
