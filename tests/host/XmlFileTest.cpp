#include "host/XmlFile.h"
#include "host/DocumentError.h"
#include "tests/host/FaultyDisk.h"
#include "tests/host/Treehost.h"

#include <sys/stat.h>

using namespace std::string_literals;

namespace {

class XmlFileTest : public HostTest {
protected:
    static std::string TextOf(const SmartPtr<XmlFile>& stream) {
        return ToUtf8(Refer(Query<IString>(stream->Identity()).Get()));
    }
    static int32_t Write(const SmartPtr<XmlFile>& stream, const wchar_t* name, std::wstring value) {
        return stream->WriteElement(name ? CreatableString::Make(name).Get() : nullptr, 0,
            CreatableString::Make(std::move(value)).Get(), 0);
    }
    void Save(const wchar_t* value) const {
        const auto stream = XmlFile::Make();
        Write(stream, L"A", value);
        stream->Commit(m_File);
    }
    bool IsAlone() const { // no temporary file is left
        return ++std::filesystem::directory_iterator(m_Folder / "") ==
               std::filesystem::directory_iterator();
    }

    TemporaryFolder m_Folder;
    std::string m_File = m_Folder / "file";
};

} // namespace

TEST_F(XmlFileTest, ElementsAreWrittenAsTheyAreAndRefusedWhenTheyCannotBeRead) {
    const auto stream = XmlFile::Make();
    const std::pair<const wchar_t*, std::wstring> taken[] = {{L"Height", L"15"},
        {L"\u00C4\u20AC", {L" a&b<c></d>\n\0", 13}}, {L"A", L"</AB>"}, {L"A", L""}};
    for (const auto& [name, value] : taken) {
        EXPECT_EQ(Write(stream, name, value), S_OK) << ToUtf8(Refer(value));
    }
    for (const wchar_t* name :
        {static_cast<const wchar_t*>(nullptr), L"", L"a b", L"a\n", L"<", L"a>", L"a/", L"a\x1b"}) {
        EXPECT_EQ(Write(stream, name, L"x"), E_INVALIDARG);
    }
    EXPECT_EQ(Write(stream, L"A", L"x</A>"), E_INVALIDARG);
    EXPECT_EQ(stream->WriteElement(CreatableString::Make(L"A").Get(), 0, nullptr, 0), E_POINTER);
    stream->Commit(m_File);
    EXPECT_EQ(Content(m_File), "<Height>15</Height>\n<\u00C4\u20AC> a&b<c></d>\n\0"
                               "</\u00C4\u20AC>\n<A></AB></A>\n<A></A>\n"s);
    EXPECT_EQ(TextOf(XmlFile::Load(m_File)), Content(m_File));
}

TEST_F(XmlFileTest, WhatCannotBeUsedIsRefused) {
    const auto refuses = [&] { EXPECT_THROW(XmlFile::Load(m_File), DocumentError); };
    EXPECT_THROW(XmlFile::Load(m_File), DocumentMissing);
    EXPECT_THROW(XmlFile::Make()->Commit(m_Folder / "no/file"), DocumentError);
    for (const char* bytes : {"<A>\xff</A>", "\xc3", "\xed\xa0\x80"}) {
        std::ofstream(m_File) << bytes;
        refuses();
    }
    std::filesystem::resize_file(m_File, XMLFILE_LARGEST + 1);
    refuses();
    std::filesystem::remove(m_File);
    std::filesystem::create_directory(m_File);
    refuses();
    EXPECT_THROW(Save(L"x"), DocumentError);
    EXPECT_TRUE(IsAlone());
}

TEST_F(XmlFileTest, PermissionsAndLinksStay) {
    const auto permissions = [&](const std::string& file) {
        struct stat status {};
        stat(file.c_str(), &status);
        return status.st_mode & 0777U;
    };
    const mode_t mask = umask(027);
    std::filesystem::create_symlink("between", m_File);
    std::filesystem::create_symlink(m_Folder / "real", m_Folder / "between");
    Save(L"1");
    umask(mask);
    EXPECT_EQ(permissions(m_Folder / "real"), 0640U) << "a new file";
    chmod((m_Folder / "real").c_str(), 0604);
    Save(L"2");
    EXPECT_EQ(permissions(m_Folder / "real"), 0604U);
    EXPECT_EQ(Content(m_Folder / "real"), "<A>2</A>\n");
    EXPECT_TRUE(std::filesystem::is_symlink(m_File));
}

TEST_F(XmlFileTest, SaveThatIsKilledOrFailsLeavesTheOldTextOrTheNew) {
    const auto prepare = [&] {
        std::filesystem::remove_all(m_Folder / "");
        std::filesystem::create_directory(m_Folder / "");
        Save(L"old");
    };
    const auto save = [&] {
        try {
            Save(L"new");
            return true;
        } catch (const DocumentError&) {
            return false;
        }
    };
    for (const Fault fault : {Fault::kKill, Fault::kFailOnce}) {
        WithEveryFault(fault, prepare, save, [&](Ending ending) {
            const std::string text = Content(m_File);
            EXPECT_TRUE(
                text == "<A>new</A>\n" || (text == "<A>old</A>\n" && ending != Ending::kUntouched))
                << text;
            EXPECT_TRUE(ending == Ending::kKilled || IsAlone());
        });
    }
}
