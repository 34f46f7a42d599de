#include "host/settings/Document.h"
#include "framework/support/REFString.h"
#include "host/Host.h"
#include "host/components/Variant.h"
#include "host/drawing/IconFile.h"
#include "host/settings/DocumentFile.h"
#include "host/settings/RegistryFile.h"
#include "tests/support/HostTest.h"

#include <cmath>
#include <sys/stat.h>

namespace {

using Folder = SmartPtr<IFolderStream>;

SmartPtr<CreatableString> Text(std::wstring text) {
    return CreatableString::Make(std::move(text));
}

Folder RootOf(const Document& document) {
    return Query<IFolderStream>(document.Root().Get());
}

Folder Create(const Folder& parent, const wchar_t* name) {
    Folder folder;
    parent->CreateFolder(Text(name).Get(), 0, folder.Receive());
    return folder;
}

/// Empty when there is none at the position.
Folder Open(const Folder& parent, double position) {
    const auto key = Variant::Make();
    key->SetDouble(position);
    Folder folder;
    parent->OpenFolder(key.Get(), 0, folder.Receive());
    return folder;
}

int32_t Write(const Folder& folder, const wchar_t* entry, std::string_view data) {
    return folder->WriteData(Text(entry).Get(), data.data(), static_cast<int32_t>(data.size()), 0);
}

/// The data of an entry, or "-" when it has not that size.
std::string Read(const Folder& folder, const wchar_t* entry, size_t size) {
    std::string data(size, '-');
    const int32_t status =
        folder->ReadData(Text(entry).Get(), data.data(), static_cast<int32_t>(size), 0);
    return status < 0 ? "-" : data;
}

std::string ReadText(const Folder& folder, const wchar_t* entry) {
    const auto text = Text(L"-");
    folder->ReadString(Text(entry).Get(), text.Get());
    return ToUtf8(CREFString(text.Get()));
}

bool WriteObject(const Folder& folder, IUnknown* object) {
    return folder->WriteObject(Text(L"object").Get(), object, 0) >= 0;
}

/// Empty when there is none.
SmartPtr<IUnknown> ReadObject(const Folder& folder) {
    SmartPtr<IUnknown> object;
    folder->ReadObject(Text(L"object").Get(), object.Receive(), 0);
    return object;
}

/// Fails to load, and to save when it has saved something.
class Failing final : public HostObject<Failing, IObjectInfo, IDataPersist> {
public:
    static constexpr const char* kKind = "Failing";

    int32_t GetName(int32_t, tagREFString* name) override {
        *name = Refer(L"Failing");
        return S_OK;
    }
    int32_t Save(IDataStream* stream, int32_t) override {
        return Write(Query<IFolderStream>(stream), L"data", "some"), m_SaveStatus;
    }
    int32_t Load(IDataStream*, int32_t) override { return E_FAIL; }

    int32_t m_SaveStatus = S_OK;
};

class DocumentTest : public HostTest {
protected:
    static void SetUpTestSuite() { Adopt(CREFString::CreateString()).Reset(); } // kept for good

    void Run(const char* statements) const {
        Database(m_File, Database::Access::kCreate).Run(statements);
    }
    /// One line that names the file.
    void ExpectRefused(Document (*use)(const std::string& file), const std::string& what) const {
        try {
            use(m_File);
            FAIL() << what << " is taken";
        } catch (const DocumentError& error) {
            EXPECT_FALSE(dynamic_cast<const DocumentMissing*>(&error)) << what;
            EXPECT_NE(std::string(error.what()).find("/my\uFFFDfile: "), std::string::npos)
                << error.what();
        }
    }

    TemporaryFolder m_Folder;
    std::string m_File = m_Folder / "my\nfile";
};

} // namespace

TEST_F(DocumentTest, WhatIsWrittenIsReadAgainInItsOrder) {
    const std::string bytes("\0\xff\n'", 4);
    const std::string text("\0ä\U0001F600'", 8);
    {
        Document document = Document::Save(m_File);
        const Folder root = RootOf(document);
        for (const wchar_t* name : {L"same", L"same", L""}) {
            const Folder folder = Create(root, name);
            Write(Create(folder, L"deep"), L"data", bytes);
            folder->WriteString(Text(L"text").Get(), Text(ToWide(text)).Get());
        }
        Write(Open(root, 1), L"data", "first");
        EXPECT_EQ(Write(Open(root, 1), L"data", ""), S_OK) << "replaced";
        EXPECT_EQ(Write(root, L"data", "root"), S_OK);
        document.Commit();
        EXPECT_LT(Write(root, L"data", "late"), 0);
    }
    Folder left;
    {
        const Document document = Document::Load(m_File);
        const Folder root = left = RootOf(document);
        for (const double position : {0, 1, 2}) {
            const Folder folder = Open(root, position);
            EXPECT_EQ(Read(Open(folder, 0), L"data", bytes.size()), bytes);
            EXPECT_EQ(ReadText(folder, L"text"), text);
            EXPECT_EQ(Read(folder, L"data", 0), position == 1 ? "" : "-");
        }
        for (const double none : {3.0, -1.0, 1e20, double(NAN)}) {
            EXPECT_FALSE(Open(root, none)) << none;
        }
        EXPECT_EQ(Read(root, L"data", 4), "root");
        EXPECT_EQ(Read(root, L"data", 3) + Read(root, L"data", 5) + Read(root, L"nope", 4), "---");
        EXPECT_EQ(ReadText(root, L"data"), "-") << "no text";
        EXPECT_LT(Write(root, L"data", "new"), 0);
    }
    EXPECT_EQ(Read(left, L"data", 4), "-") << "the document is gone";
}

TEST_F(DocumentTest, ObjectsAreMadeAgainAndIconsMoveWithTheInstallation) {
    Host host(BuildFolder());
    const auto text = Text(L"");
    const auto failing = Failing::Make();
    host.Register(L"Failing",
        [&](const IID& iid, void** object) { return failing->QueryInterface(iid, object); });
    std::filesystem::path install;
    host.Register(L"Registry", [&](const IID& iid, void** object) {
        return RegistryFile::Make(install)->QueryInterface(iid, object);
    });
    // The second name would be taken for another one if it did not stay absolute.
    const std::pair<const char*, const char*> icons[] = {
        {"old/icon.png", "new/icon.png"}, {"old/a\\b/icon.png", "old/a\\b/icon.png"}};
    for (const auto& [name, place] : icons) {
        std::filesystem::create_directories((m_Folder / place).parent_path());
        std::filesystem::copy_file(BuildFolder() / "share/_icons/UITreeOpen.png", m_Folder / place);
        const auto icon = IconFile::Make();
        icon->SetFileName(Text((m_Folder / name).wstring()).Get());
        SmartPtr<IUnknown> moved(icon->Identity());
        install = m_Folder / "old";
        for (const char* next : {"gone", "new"}) {
            const Document document = Document::InMemory();
            const Folder root = RootOf(document);
            failing->m_SaveStatus = S_OK;
            EXPECT_TRUE(WriteObject(root, failing->Identity()) && !ReadObject(root));
            failing->m_SaveStatus = E_FAIL;
            EXPECT_TRUE(WriteObject(root, moved.Get()));
            EXPECT_FALSE(WriteObject(root, text->Identity())) << "what was there stays";
            EXPECT_FALSE(WriteObject(root, failing->Identity()));
            EXPECT_FALSE(Open(root, 0)) << "objects have no position";
            install = m_Folder / next;
            moved = ReadObject(root);
        }
        const auto drawn = Query<IRenderableObject>(moved.Get());
        EXPECT_TRUE(drawn && drawn->Render(nullptr, nullptr, nullptr, 0) == S_OK) << name;
    }
}

TEST_F(DocumentTest, WhatCannotBeUsedIsRefusedInOneLineAndStaysAsItIs) {
    EXPECT_THROW(Document::Load(m_File), DocumentMissing);
    EXPECT_THROW(Document::Save(m_File + "/no/folder"), DocumentError);
    { const Document abandoned = Document::Save(m_File); }
    EXPECT_FALSE(std::filesystem::exists(m_File));
    {
        Document document = Document::Save(m_File);
        Write(RootOf(document), L"data", std::string(10000, 'x'));
        document.Commit();
    }
    const std::string good = Content(m_File);
    const std::pair<const char*, std::function<void()>> files[] = {
        {"a text", [&] { std::ofstream(m_File) << "A\n  text\n"; }},
        {"zeros", [&] { std::ofstream(m_File) << std::string(8192, '\0'); }},
        {"another database", [&] { std::ofstream{m_File}, Run("CREATE TABLE folder(id)"); }},
        {"a newer document", [&] { Run("PRAGMA user_version = 2"); }},
        {"another journal", [&] { Run("PRAGMA journal_mode = WAL"); }},
        {"another table", [&] { Run("CREATE TABLE other(id)"); }},
        {"a cut one", [&] { std::filesystem::resize_file(m_File, 8192); }},
        {"a damaged one", [&] { std::fstream(m_File).seekp(4096) << std::string(4096, 'x'); }},
        {"a folder", [&] { std::filesystem::remove(m_File), mkdir(m_File.c_str(), 0700); }},
        {"a pipe", [&] { std::filesystem::remove(m_File), mkfifo(m_File.c_str(), 0600); }}};
    for (const auto& [what, make] : files) {
        std::filesystem::remove(m_File);
        std::ofstream(m_File) << good;
        make();
        const bool isFile = std::filesystem::is_regular_file(m_File);
        const std::string before = isFile ? Content(m_File) : "";
        ExpectRefused(&Document::Load, what);
        ExpectRefused(&Document::Save, what);
        EXPECT_EQ(isFile ? Content(m_File) : "", before) << what;
        EXPECT_FALSE(std::filesystem::exists(m_File + "-journal")) << what;
    }
    std::filesystem::remove(m_File);
    std::ofstream(m_File) << good;
    std::ofstream(m_File + "-journal") << "my diary";
    ExpectRefused(&Document::Load, "a diary");
    ExpectRefused(&Document::Save, "a diary");
    EXPECT_EQ(Content(m_File + "-journal"), "my diary");
}
