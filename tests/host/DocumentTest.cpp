#include "host/Document.h"
#include "framework/REFString.h"
#include "host/DocumentFile.h"
#include "host/Host.h"
#include "host/IconFile.h"
#include "host/RegistryFile.h"
#include "host/Variant.h"
#include "tests/host/FaultyDisk.h"
#include "tests/host/HostTest.h"

#include <cmath>
#include <fstream>
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
    const int32_t status = parent->OpenFolder(key.Get(), 0, folder.Receive());
    EXPECT_EQ(status < 0, !folder);
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
    EXPECT_TRUE(status >= 0 || data == std::string(size, '-')) << "stored by a failure";
    return status < 0 ? "-" : data;
}

std::wstring ReadText(const Folder& folder, const wchar_t* entry) {
    const auto text = Text(L"");
    const int32_t status = folder->ReadString(Text(entry).Get(), text.Get());
    const tagREFString read = Refer(text.Get());
    return status < 0 ? L"-" : std::wstring(read.m_String, static_cast<size_t>(read.m_Length));
}

int32_t WriteObject(const Folder& folder, const wchar_t* entry, IUnknown* object) {
    return folder->WriteObject(Text(entry).Get(), object, 0);
}

template <class T = IUnknown>
SmartPtr<T> ReadObject(const Folder& folder, const wchar_t* entry, bool succeeds = true) {
    SmartPtr<IUnknown> object;
    EXPECT_EQ(folder->ReadObject(Text(entry).Get(), object.Receive(), 0) >= 0, succeeds);
    return Query<T>(object.Get());
}

/// Saves itself within itself, and again there, or answers a failure.
class Nest final : public HostObject<Nest, IObjectInfo, IDataPersist> {
public:
    static constexpr const char* kKind = "Nest";

    int32_t GetName(int32_t, tagREFString* name) override {
        *name = Refer(std::wstring_view(L"Nest"));
        return S_OK;
    }
    int32_t Save(IDataStream* stream, int32_t) override {
        const auto folder = Query<IFolderStream>(stream);
        Create(folder, L"below");
        Write(folder, L"data", m_Word);
        m_Levels += m_Status >= 0 && WriteObject(folder, L"entry", Identity()) >= 0 ? 1 : 0;
        return m_Status;
    }
    int32_t Load(IDataStream* stream, int32_t) override {
        m_Word = Read(Query<IFolderStream>(stream), L"data", 3);
        return m_Status;
    }

    std::string m_Word = "old";
    int32_t m_Status = S_OK;
    int32_t m_Levels = 0;
};

class DocumentTest : public HostTest {
protected:
    static void SetUpTestSuite() { Adopt(CREFString::CreateString()).Reset(); } // kept for good

    /// Saves a document of several pages that is full of a word.
    void Save(const std::string& word) const {
        Document document = Document::Save(m_File);
        const Folder folder = Create(RootOf(document), L"folder");
        for (const wchar_t* entry : {L"a", L"b", L"c"}) {
            Write(folder, entry, word + std::string(5000, word.front()));
            PassPoint();
        }
        document.Commit();
    }
    /// The word; "nil" when there is no document or nothing in it.
    std::string Load() const {
        if (!std::filesystem::exists(m_File)) {
            return "nil";
        }
        const Document document = Document::Load(m_File);
        const Folder folder = Open(RootOf(document), 0);
        const std::string first = folder ? Read(folder, L"a", 5003) : "nil";
        const bool isWhole =
            !folder || (Read(folder, L"b", 5003) == first && Read(folder, L"c", 5003) == first);
        return isWhole ? first.substr(0, 3) : "mixed";
    }
    void Run(const char* statements) const {
        Database(m_File, Database::Access::kCreate).Run(statements);
    }
    std::string Content() const {
        std::ifstream file(m_File);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    /// One line that names the file.
    void ExpectRefused(const std::function<void()>& use, const std::string& what) const {
        try {
            use();
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
    const std::wstring text(L"\0ä\U0001F600'", 4);
    {
        Document document = Document::Save(m_File);
        const Folder root = RootOf(document);
        for (const wchar_t* name : {L"same", L"same", L""}) {
            const Folder folder = Create(root, name);
            Write(Create(folder, L"deep"), L"data", bytes);
            folder->WriteString(Text(L"text").Get(), Text(text).Get());
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
        EXPECT_EQ(ReadText(root, L"data"), L"-") << "no text";
        EXPECT_LT(Write(root, L"data", "new"), 0);
        EXPECT_EQ(root->WriteData(nullptr, "", 0, 0), E_POINTER);
        EXPECT_EQ(root->ReadData(Text(L"data").Get(), nullptr, 4, 0), E_POINTER);
    }
    EXPECT_EQ(Read(left, L"data", 4), "-") << "the document is gone";
}

TEST_F(DocumentTest, ObjectsAreMadeAgainOrLeaveNothing) {
    Host host(BuildFolder());
    const auto nest = Nest::Make();
    host.Register(
        L"Nest", [&](const IID& iid, void** object) { return nest->QueryInterface(iid, object); });
    Document document = Document::InMemory();
    const Folder root = RootOf(document);
    EXPECT_EQ(WriteObject(root, L"null", nullptr), S_OK);
    EXPECT_EQ(WriteObject(root, L"nest", nest->Identity()), S_OK);
    EXPECT_EQ(nest->m_Levels, 63) << "as deep as folders may lie";
    nest->m_Word = "new";
    EXPECT_EQ(WriteObject(root, L"nest", nest->Identity()), S_OK);
    nest->m_Word = "";
    EXPECT_TRUE(ReadObject(root, L"nest") == nest->Identity());
    EXPECT_EQ(nest->m_Word, "new") << "replaced";
    EXPECT_FALSE(ReadObject(root, L"null"));
    EXPECT_FALSE(ReadObject(root, L"nope", false));
    nest->m_Status = E_FAIL;
    EXPECT_FALSE(ReadObject(root, L"nest", false)) << "it does not load";
    nest->m_Status = S_OK;
    EXPECT_EQ(WriteObject(root, L"nest", nullptr), S_OK);
    nest->m_Status = E_FAIL;
    const auto text = Text(L"");
    for (IUnknown* object : {nest->Identity(), text->Identity()}) {
        EXPECT_LT(WriteObject(root, L"nest", object), 0);
        EXPECT_FALSE(ReadObject(root, L"nest")) << "what was there stays";
        EXPECT_FALSE(Open(root, 0)) << "objects have no position";
    }
    document.Commit();
}

TEST_F(DocumentTest, IconMovesWithTheInstallationAndKeepsTheNameOfAMissingFile) {
    Host host(BuildFolder());
    std::filesystem::path install = m_Folder / "old";
    host.Register(L"Registry", [&](const IID& iid, void** object) {
        return RegistryFile::Make(install)->QueryInterface(iid, object);
    });
    std::filesystem::create_directories(m_Folder / "new");
    std::filesystem::copy_file(
        BuildFolder() / "share/_icons/UITreeOpen.png", m_Folder / "new/icon.png");
    const std::tuple<const char*, std::string, std::string, bool> icons[] = {
        {"icon.png", "icon.png", "icon.png", true}, {"nope.png", "nope.png", "nope.png", false},
        {"../up.png", "..\\up.png", "..\\up.png", false},
        // A name that would be taken for another one.
        {"a/b.png", m_Folder / "old/a/b.png", "..\\old/a/b.png", false}};
    for (const auto& [name, first, second, isDrawn] : icons) {
        install = m_Folder / "old";
        const auto set = IconFile::Make();
        set->SetFileName(Text((install / name).lexically_normal().wstring()).Get());
        SmartPtr<IRenderableObject> icon(set.Get());
        for (const std::string& stored : {first, second}) {
            Document document = Document::Save(m_File);
            EXPECT_EQ(WriteObject(RootOf(document), L"icon", icon.Get()), S_OK);
            document.Commit();
            const Database database = OpenToLoad(m_File);
            Statement row(database, "SELECT value FROM entry WHERE name = 'FileName'");
            EXPECT_TRUE(row.Step());
            EXPECT_EQ(row.Bytes(0), stored);
            install = m_Folder / "new";
            icon = ReadObject<IRenderableObject>(RootOf(Document::Load(m_File)), L"icon");
            ASSERT_TRUE(icon);
            EXPECT_EQ(icon->Render(nullptr, nullptr, nullptr, 0) >= 0, isDrawn) << name;
        }
    }
}

TEST_F(DocumentTest, WhatCannotBeUsedIsRefusedInOneLineAndStaysAsItIs) {
    const std::pair<const char*, std::function<void()>> files[] = {
        {"a text", [&] { std::ofstream(m_File) << "A\n  text\n"; }},
        {"zeros", [&] { std::ofstream(m_File) << std::string(8192, '\0'); }},
        {"another database", [&] { Run("CREATE TABLE folder(id)"); }},
        {"a newer document", [&] { Save("new"), Run("PRAGMA user_version = 2"); }},
        {"another journal", [&] { Save("new"), Run("PRAGMA journal_mode = WAL"); }},
        {"another table", [&] { Save("new"), Run("CREATE TABLE other(id)"); }},
        {"a cut one", [&] { Save("new"), std::filesystem::resize_file(m_File, 8192); }},
        {"a damaged one",
            [&] { Save("new"), std::fstream(m_File).seekp(4096) << std::string(4096, 'x'); }}};
    for (const auto& [what, make] : files) {
        std::filesystem::remove(m_File);
        make();
        const std::string before = Content();
        ExpectRefused([&] { Document::Load(m_File); }, what);
        ExpectRefused([&] { Document::Save(m_File); }, what);
        EXPECT_EQ(Content(), before) << what;
        EXPECT_FALSE(std::filesystem::exists(m_File + "-journal")) << what;
    }
    for (const auto& make : {+[](const char* file) { return mkdir(file, 0700); },
             +[](const char* file) { return mkfifo(file, 0600); }}) {
        std::filesystem::remove(m_File);
        make(m_File.c_str());
        ExpectRefused([&] { Document::Load(m_File); }, "no file");
        ExpectRefused([&] { Document::Save(m_File); }, "no file");
    }
    std::filesystem::remove(m_File);
    EXPECT_THROW(Document::Load(m_File), DocumentMissing);
    { const Document abandoned = Document::Save(m_File); }
    EXPECT_FALSE(std::filesystem::exists(m_File));
    EXPECT_THROW(Document::Save(m_File + "/no/folder"), DocumentError);
}

TEST_F(DocumentTest, SaveThatIsKilledOrFailsLeavesTheOldContentOrTheNew) {
    for (const std::string before : {"old", "nil"}) {
        for (const Fault fault : {Fault::kKill, Fault::kFailOnce, Fault::kFail}) {
            const auto prepare = [&] {
                std::filesystem::remove(m_File);
                std::filesystem::remove(m_File + "-journal");
                before == "old" ? Save(before) : void();
            };
            const auto save = [&] {
                try {
                    Save("new");
                    return true;
                } catch (const DocumentError&) {
                    return false;
                }
            };
            WithEveryFault(fault, prepare, save, [&](Ending ending) {
                const std::string after = Load();
                EXPECT_TRUE(after == before || ending != Ending::kFailed) << after;
                EXPECT_TRUE(after == "new" || (after == before && ending == Ending::kKilled) ||
                            ending == Ending::kFailed)
                    << after;
            });
        }
    }
}
