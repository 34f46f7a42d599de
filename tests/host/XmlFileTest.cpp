#include "host/settings/XmlFile.h"
#include "host/settings/DocumentError.h"
#include "tests/support/HostTest.h"

#include <sys/stat.h>

using namespace std::string_literals;

namespace {

class XmlFileTest : public HostTest {
protected:
    static int32_t Write(const SmartPtr<XmlFile>& stream, const wchar_t* name, std::wstring value) {
        return stream->WriteElement(
            CreatableString::Make(name).Get(), 0, CreatableString::Make(std::move(value)).Get(), 0);
    }
    void Save(const wchar_t* value) const {
        const auto stream = XmlFile::Make();
        Write(stream, L"A", value);
        stream->Commit(m_File);
    }

    TemporaryFolder m_Folder;
    std::string m_File = m_Folder / "file";
};

} // namespace

TEST_F(XmlFileTest, ElementsAreWrittenAsTheyAreAndRefusedWhenTheyCannotBeRead) {
    const auto stream = XmlFile::Make();
    const std::pair<const wchar_t*, std::wstring> taken[] = {
        {L"Height", L"15"}, {L"\u00C4\u20AC", {L" a&b<c>\n\0", 9}}, {L"A", L""}};
    for (const auto& [name, value] : taken) {
        EXPECT_EQ(Write(stream, name, value), S_OK) << ToUtf8(Refer(value));
    }
    stream->Commit(m_File);
    EXPECT_EQ(Content(m_File), "<Height>15</Height>\n<\u00C4\u20AC> a&b<c>\n\0"
                               "</\u00C4\u20AC>\n<A></A>\n"s);
    const auto loaded = Query<IString>(XmlFile::Load(m_File)->Identity());
    EXPECT_EQ(ToUtf8(CREFString(loaded.Get())), Content(m_File));
    for (const wchar_t* name : {L"", L"a b", L"a\n", L"<", L"a>", L"a/", L"a\x1b"}) {
        EXPECT_EQ(Write(stream, name, L"x"), E_INVALIDARG);
    }
    EXPECT_EQ(Write(stream, L"A", L"x</b>"), E_INVALIDARG);
    EXPECT_THROW(stream->Commit(m_File), DocumentError) << "a setting would be lost";
}

TEST_F(XmlFileTest, WhatCannotBeUsedIsRefused) {
    EXPECT_THROW(XmlFile::Load(m_File), DocumentMissing);
    EXPECT_THROW(XmlFile::Make()->Commit(m_Folder / "no/file"), DocumentError);
    const std::string largest(XMLFILE_LARGEST, ' '), large = largest + ' ';
    for (const std::string& bytes : {large, "<A>\xff</A>"s, "\xc3"s, "\xed\xa0\x80"s, "My notes"s,
             "<A>1</A> and more"s, "<a><A>1</A></a>"s, "<A>1"s, "<A>1</B>"s, "<!-- "s}) {
        std::ofstream(m_File) << bytes;
        EXPECT_THROW(XmlFile::Load(m_File), DocumentError);
    }
    EXPECT_THROW(XmlFile::Load(m_Folder / ""), DocumentError);
    EXPECT_THROW(XmlFile::Make()->Commit(m_File), DocumentError) << "nothing is no settings";
    std::ofstream(m_File) << largest;
    EXPECT_NO_THROW(XmlFile::Load(m_File));
    std::ofstream(m_File) << "<?xml version=\"1.0\"?>\n<!-- <A> -->\n<A unit=\"px\">1</A><B></B>\n";
    EXPECT_NO_THROW(XmlFile::Load(m_File));
}

TEST_F(XmlFileTest, PermissionsAndLinksStay) {
    const std::filesystem::path real = m_Folder / "real";
    const auto permissions = [&] { return unsigned(std::filesystem::status(real).permissions()); };
    const mode_t mask = umask(027);
    std::filesystem::create_symlink("between", m_File);
    std::filesystem::create_symlink(real, m_Folder / "between");
    Save(L"1");
    umask(mask);
    EXPECT_EQ(permissions(), 0640U) << "a new file";
    chmod(real.c_str(), 0604);
    Save(L"2");
    EXPECT_EQ(permissions(), 0604U);
    EXPECT_EQ(Content(real), "<A>2</A>\n");
    EXPECT_TRUE(std::filesystem::is_symlink(m_File));
}
