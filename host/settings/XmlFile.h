#pragma once

#include "framework/interfaces/StreamInterfaces.h"
#include "host/components/HostObject.h"

#include <string>
#include <string_view>
#include <vector>

/// Settings as text: one element per line, `<Name>value</Name>`, in a UTF-8 file of up to
/// XMLFILE_LARGEST bytes. The elements stand side by side without one around them, and values are
/// written as they are, because that is how they are read again.
class XmlFile final : public HostObject<XmlFile, IDataStream, IXMLStream, IString> {
public:
    static constexpr const char* kKind = "XmlFile";

    /// The stream over the text of a file. Throws DocumentMissing, or DocumentError for what is no
    /// sequence of elements with text in them.
    static SmartPtr<XmlFile> Load(const std::string& file);

    /// An element of the text, or, without a name, a declaration or a comment.
    struct Item {
        std::wstring_view m_Name = {};
        std::wstring_view m_Content = {}; ///< without blanks around it
        int32_t m_Line = 0;               ///< from 1
    };
    /// What stands in the text, which lives as long as this object.
    std::vector<Item> Items() const;

    /// Refuses, with E_INVALIDARG, a name that is null or no name of an element, and a value that
    /// contains the beginning of an end of one. There is no commit then.
    int32_t WriteElement(IString* name, int32_t, IString* value, int32_t) override;
    int32_t GetString(wchar_t** text, int32_t* length) override;

    /// Makes the text the file's content, in one step. Throws DocumentError, also when an
    /// element could not be written, or none was: the file is as it was, unless only the folder
    /// could not be written through, and the new text may yet be lost with the power.
    void Commit(const std::string& file) const;

private:
    std::wstring m_Text;
    bool m_IsIncomplete = false;
};

/// Far more than settings need; whatever stands in it, the control reads it in a tenth of a second.
constexpr size_t XMLFILE_LARGEST = size_t{1} << 20;
