#pragma once

#include "framework/Interfaces.h"
#include "framework/Support.h"
#include "host/HostObject.h"
#include "host/Text.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

/// A folder stream in memory that keeps everything in the order in which it was written, entries of
/// wrong size and name included, and shows it as text.
class MemoryFolder final : public HostObject<MemoryFolder, IDataStream, IFolderStream> {
public:
    static constexpr const char* kKind = "MemoryFolder";

    struct Entry {
        std::string name, bytes;
        SmartPtr<IUnknown> object = {};
    };

    int32_t CreateFolder(IString* name, int32_t mode, IFolderStream** folder) override {
        *folder = nullptr;
        EXPECT_EQ(mode, 0);
        if (ToUtf8(Refer(name)) == m_Refused) {
            return E_FAIL;
        }
        m_Folders.push_back(Make());
        m_Folders.back()->m_Name = ToUtf8(Refer(name));
        *folder = SmartPtr<IFolderStream>(m_Folders.back().Get()).Detach();
        return S_OK;
    }
    int32_t WriteData(IString* entry, const void* data, int32_t size, int32_t mode) override {
        m_Entries.push_back({ToUtf8(Refer(entry)), {static_cast<const char*>(data), size_t(size)}});
        EXPECT_EQ(mode, 0);
        return S_OK;
    }
    int32_t WriteString(IString* entry, IString* value) override {
        m_Entries.push_back(
            {ToUtf8(Refer(entry)), ToUtf8(Refer(value)), SmartPtr<IUnknown>(value)});
        return S_OK;
    }
    int32_t WriteObject(IString* entry, IUnknown* object, int32_t mode) override {
        m_Entries.push_back({ToUtf8(Refer(entry)), object ? "object" : "null", SmartPtr(object)});
        EXPECT_EQ(mode, 0);
        return S_OK;
    }
    int32_t ReadData(IString* entry, void* data, int32_t size, int32_t) override {
        const Entry* found = Find(entry);
        if (!found || found->bytes.size() != size_t(size)) {
            return E_FAIL;
        }
        found->bytes.copy(static_cast<char*>(data), size_t(size));
        return S_OK;
    }
    int32_t ReadString(IString* entry, IString* value) override {
        const Entry* found = Find(entry);
        return found ? Query<ICreatableString>(value)->SetString(
                           Refer(std::wstring_view(ToWide(found->bytes))))
                     : E_FAIL;
    }
    int32_t OpenFolder(IVariant* key, int32_t, IFolderStream** folder) override {
        const auto position = static_cast<size_t>(key->GetDouble());
        const bool exists = position < m_Folders.size();
        *folder = exists ? SmartPtr<IFolderStream>(m_Folders[position].Get()).Detach() : nullptr;
        return exists ? S_OK : E_FAIL;
    }
    int32_t ReadObject(IString* entry, IUnknown** object, int32_t) override {
        const Entry* found = Find(entry);
        *object = found ? SmartPtr(found->object).Detach() : nullptr;
        return found ? S_OK : E_FAIL;
    }

    /// "<folder>: <entry>=<hexadecimal bytes, or what it is> ...\n" for each folder.
    std::string Describe() const {
        std::string text;
        for (const auto& folder : m_Folders) {
            text += folder->m_Name + ":";
            for (const Entry& entry : folder->m_Entries) {
                const bool isText = entry.object || entry.bytes == "null";
                text += " " + entry.name + "=" + (isText ? entry.bytes : Hexadecimal(entry.bytes));
            }
            text += "\n";
        }
        return text;
    }

    std::string m_Name;
    std::string m_Refused = "-"; ///< the name of a folder that cannot be made
    std::vector<SmartPtr<MemoryFolder>> m_Folders;
    std::vector<Entry> m_Entries;

private:
    const Entry* Find(IString* name) const {
        for (const Entry& entry : m_Entries) {
            if (entry.name == ToUtf8(Refer(name))) {
                return &entry;
            }
        }
        return nullptr;
    }
    static std::string Hexadecimal(const std::string& bytes) {
        std::string text;
        for (const char byte : bytes) {
            constexpr const char* kDigits = "0123456789ABCDEF";
            text += {kDigits[uint8_t(byte) >> 4], kDigits[byte & 0xF]};
        }
        return text;
    }
};

/// An XML stream whose text is what was written.
class MemoryXml final : public HostObject<MemoryXml, IDataStream, IXMLStream, IString> {
public:
    static constexpr const char* kKind = "MemoryXml";

    explicit MemoryXml(std::wstring text = {}) : m_Text(std::move(text)) {}

    int32_t WriteElement(IString* name, int32_t first, IString* value, int32_t last) override {
        EXPECT_EQ(first | last, 0);
        const std::wstring tag(name ? ViewOf(Refer(name)) : L"(none)");
        m_Text += L"<" + tag + L">" + std::wstring(ViewOf(Refer(value))) + L"</" + tag + L">";
        return S_OK;
    }
    int32_t GetString(wchar_t** text, int32_t* length) override {
        m_Read.assign(m_Text.begin(), m_Text.end());
        *text = m_Read.data();
        *length = static_cast<int32_t>(m_Read.size());
        return S_OK;
    }

    std::wstring m_Text;

private:
    std::vector<wchar_t> m_Read; ///< of exactly the size, so that a read past the end is caught
};
