#include "app/faults/FailingNew.h"
#include "app/faults/HostTurn.h"
#include "framework/support/XMLIndex.h"
#include "host/settings/DocumentInMemory.h"
#include "tests/framework/SettingsTest.h"

#include <cstring>
#include <random>

namespace {

/// A stream of XML whose text is what was written, and of folders that hold nothing, or itself as
/// the parameter and of the type of a number. It may do something whenever it is used.
struct AnyStream final : HostObject<AnyStream, IDataStream, IFolderStream, IXMLStream, IString> {
    static constexpr const char* kKind = "AnyStream";

    explicit AnyStream(std::wstring text = {}) : m_Text(std::move(text)) {}

    int32_t CreateFolder(IString*, int32_t mode, IFolderStream** folder) override {
        return OpenFolder(nullptr, mode, folder);
    }
    int32_t WriteData(IString* entry, const void*, int32_t, int32_t mode) override {
        return Note(entry, mode);
    }
    int32_t WriteString(IString* entry, IString*) override { return Note(entry); }
    int32_t WriteObject(IString* entry, IUnknown*, int32_t mode) override {
        return Note(entry, mode);
    }
    int32_t ReadData(IString*, void* data, int32_t size, int32_t mode) override {
        if (m_Number != 0 && size == sizeof(m_Number)) {
            std::memcpy(data, &m_Number, sizeof(m_Number));
        }
        return Use(mode);
    }
    int32_t ReadString(IString*, IString*) override { return Use(); }
    int32_t ReadObject(IString*, IUnknown** object, int32_t mode) override {
        *object = SmartPtr(Identity()).Detach();
        return Use(mode);
    }
    int32_t OpenFolder(IVariant* key, int32_t mode, IFolderStream** folder) override {
        const bool exists = !key || key->GetDouble() == 0;
        *folder = SmartPtr<IFolderStream>(this).Detach(); // a failure leaves something, too
        return exists ? Use(mode) : E_FAIL;
    }
    int32_t WriteElement(IString* name, int32_t first, IString* value, int32_t last) override {
        const std::wstring tag = name ? Text(name) : L"(none)";
        m_Text += L"<" + tag + L">" + Text(value) + L"</" + tag + L">";
        return Use(first | last);
    }
    int32_t GetString(wchar_t** text, int32_t* length) override {
        m_Read.emplace(m_Text);
        *text = m_Read->data();
        *length = static_cast<int32_t>(m_Read->size());
        return Use();
    }
    int32_t Use(int32_t mode = 0) {
        EXPECT_EQ(mode, 0);
        m_OnUse();
        return S_OK;
    }
    int32_t Note(IString* entry, int32_t mode = 0) {
        m_Written += Text(entry) + L" ";
        return Use(mode);
    }

    std::wstring m_Text;
    std::optional<GuardedText> m_Read;
    std::function<void()> m_OnUse = [] {};
    int32_t m_Number = 0;
    std::wstring m_Written; ///< the entries in the order of their writing
};

/// Names for parameters: "T5" asked for by the text "5", "N5" by the number. 7 has none by text, 2
/// none by number, and 3's is no string.
struct Names final : HostObject<Names, INamedCollection> {
    static constexpr const char* kKind = "Names";
    int32_t FindItem(IString* name, int32_t* index) override {
        *index = 1000 + _IS2Integer(CREFString(name), 10);
        return *index == 1007 ? E_FAIL : S_OK;
    }
    int32_t GetItem(int32_t index, IUnknown** item) override {
        const HostTurn turn;
        const auto name = (index < 1000 ? L"N" : L"T") + std::to_wstring(index % 1000);
        *item = index == 2   ? nullptr
                : index == 3 ? SmartPtr(SuperCollection::Make()->Identity()).Detach()
                             : static_cast<IUnknown*>(ISCreate(name.c_str()));
        return S_OK;
    }
};

struct PersistenceTest : SettingsTest {
    PersistenceTest() {
        m_String.Attach(ISCreate(L"<text>"));
        m_File.Attach(ISCreate((Install() + L"/icons/x.png").c_str()));
    }
    static std::wstring Install() {
        SmartPtr<IString> path;
        FILENAMEGetInstallPath(path.Receive());
        return Text(path.Get());
    }
    void Forget() {
        m_Byte = 0, m_Short = 0, m_Long = 0, m_Color = 0, m_Float = 0, m_Double = 0;
        m_String = nullptr;
        m_File = nullptr;
        m_Object = nullptr;
    }
    /// The values of the beginning, but for the two that the XML form cannot name.
    void ExpectValues(int16_t two, int32_t three) const {
        EXPECT_EQ(std::tuple(m_Byte, m_Short, m_Long, m_Color, m_Transient),
            std::tuple(0xFE, two, three, 0x123456, 1));
        EXPECT_EQ(std::pair(m_Float, m_Double), std::pair(2.5F, double{-0.1F}));
        EXPECT_EQ(Text(m_String.Get()), L"<text>");
        EXPECT_EQ(Text(m_File.Get()), Install() + L"/icons/x.png");
    }
    int32_t SaveFolders(Settings& object, IFolderStream* stream) const {
        return object.UIPropInterrogate_SaveFolderStream(m_Names.Get(), stream, 0);
    }
    int32_t LoadFolders(Settings& object, IFolderStream* stream) const {
        return object.UIPropInterrogate_LoadFolderStream(stream, 0);
    }
    int32_t SaveXml(Settings& object, IDataStream* stream) const {
        return object.UIPropInterrogate_SaveXML(m_Names.Get(), stream, 0);
    }
    int32_t LoadXml(Settings& object, IDataStream* stream) const {
        return object.UIPropInterrogate_LoadXML(m_Names.Get(), stream, 0);
    }

    SmartPtr<Names> m_Names = Names::Make();
};

} // namespace

TEST_F(PersistenceTest, FoldersHoldEveryParameterByteForByteInTheTablesOrder) {
    const DocumentInMemory folders;
    EXPECT_EQ(SaveFolders(*m_Settings.Get(), folders.Root()), S_OK);
    EXPECT_EQ(folders.Describe(), "7: Flags=07000000 ID=07000000 Value=null\n"
                                  "T1: Flags=01000000 ID=01000000 Value=FE000000\n"
                                  "T2: Flags=02000000 ID=02000000 Value=FEFFFFFF\n"
                                  "T13: Flags=23000000 ID=0D000000 Value=56341200\n"
                                  "T3: Flags=03000000 ID=03000000 Value=0F000000\n"
                                  "T4: Flags=04000000 ID=04000000 Value=0000000000000440\n"
                                  "T5: Flags=05000000 ID=05000000 Value=000000A09999B9BF\n"
                                  "T6: Flags=06000000 ID=06000000 Value=<text>\n"
                                  "T16: Flags=06010000 ID=10000000 Value=icons/x.png\n");
    EXPECT_EQ(SaveFolders(*m_Settings.Get(), nullptr), S_OK);
    const auto stream = AnyStream::Make();
    SaveFolders(*m_Settings.Get(), stream.Get());
    EXPECT_TRUE(stream->m_Written.starts_with(L"ID Flags Value ID Flags Value ID Flags Value "));
    stream->m_Number = 7;
    LoadFolders(*m_Settings.Get(), stream.Get());
    EXPECT_EQ(std::exchange(m_Object, {}).Get(), stream->Identity());
}

TEST_F(PersistenceTest, FoldersAreFoundByTheirNumberAndTypeAndSkippedWithoutThem) {
    const DocumentInMemory saved;
    saved.Add(999, 3, "abcd");
    saved.Add(23, 3, "abcd"); // transient
    m_Object.Attach(ICONCreate(CREFString(L"UITreeOpen.png")));
    SaveFolders(*m_Settings.Get(), saved.Root());
    saved.Add(999, 3, "abcd");
    Forget();
    EXPECT_EQ(LoadFolders(*m_Settings.Get(), saved.Root()), S_OK);
    ExpectValues(-2, 15);
    EXPECT_TRUE(Query<IRenderableObject>(m_Object.Get()));

    const DocumentInMemory odd;
    odd.Add(7, 7, "none"); // no object: none
    odd.Add(6, 6, "");     // no text: the empty one
    odd.Add(3, 3, "abcd", L"Id");
    odd.Add(3, 3, "abc"); // no value of that size
    odd.Add(4, 4, "abc");
    odd.Add(3, 5, "abcdefgh");                  // another type
    odd.Add(2, 2 | PROPFLAG_COLOR, "\1\1\1\1"); // loads: it is of the type
    EXPECT_EQ(LoadFolders(*m_Settings.Get(), odd.Root()), S_OK);
    EXPECT_EQ(std::tuple(m_Short, m_Long, m_Float), std::tuple(0x101, 15, 2.5F));
    EXPECT_TRUE(m_String && Text(m_String.Get()).empty());
    EXPECT_FALSE(m_Object);
}

TEST_F(PersistenceTest, XmlHoldsNumbersAndTextsUnderTheirNames) {
    const auto xml = AnyStream::Make();
    m_Settings->UIPropInterrogate_SaveXML(nullptr, xml.Get(), 0);
    EXPECT_EQ(xml->m_Text, L"") << "there is no string table";
    EXPECT_EQ(SaveXml(*m_Settings.Get(), xml.Get()), S_OK);
    EXPECT_EQ(xml->m_Text, L"<N1>254</N1><(none)>-2</(none)><N13>#123456</N13><(none)>15</(none)>"
                           L"<N4>2.500000</N4><N5>-0.100000</N5><N6><text></N6>"
                           L"<N16>icons/x.png</N16>");
    Forget();
    EXPECT_EQ(LoadXml(*m_Settings.Get(), xml.Get()), S_OK);
    ExpectValues(0, 0);
    m_String = nullptr;
    SaveXml(*m_Settings.Get(), xml.Get());
    EXPECT_TRUE(xml->m_Text.find(L"<N6></N6>") < xml->m_Text.size()) << "a missing text is saved";
    const std::wstring path = Install() + L"/icons/y.png";
    m_String.Attach(ISCreate(path.c_str()));
    SaveXml(*m_Settings.Get(), xml.Get());
    EXPECT_TRUE(xml->m_Text.find(path) < xml->m_Text.size()) << "it is no file name";
}

TEST_F(PersistenceTest, XmlElementsCountByTheirWholeTag) {
    const std::pair<const wchar_t*, int> cases[] = {{L"<n13>30</N13>", 0}, {L"<n13>30</n13>", 30},
        {L"<N13 unit=px>30</N13>", 7}, {L"<?xml version=1.0?>\n<!-- N13 -->\n<N13>#1F</N13>", 31},
        {L"<N13>abc</N13>", 0}, {L"<N13> 30</N13>", 0}, {L"<Root><N13>30</N13></Root>", 7},
        {L"<N13>20</N13><N13>25</N13>", 25}, {L"< \x01N13\t>4</N13><N13 a>6</N13>", 6},
        {L"< N13>4", 7}, {L"<N13 \n>4</N13>", 4}, {L"</N13>", 7}, {L"<", 7}, {L"<<>", 7},
        {L"<N13", 7}, {L"<>9</>", 7}, {L"< /N13>1</N13><N13>2</N13>", 2},
        {L"<N2>1</N2><N23>5</N23><N8>5</N8><T13>5</T13>", 7}};
    for (const auto& [text, color] : cases) {
        m_Color = 7;
        LoadXml(*m_Settings.Get(), AnyStream::Make(text).Get());
        EXPECT_EQ(m_Color, color) << testing::PrintToString(text);
    }
    EXPECT_EQ(std::tuple(m_Short, m_Long, m_Transient), std::tuple(-2, 15, 1));
    EXPECT_EQ(LoadXml(*m_Settings.Get(), nullptr), S_OK);
    EXPECT_EQ(SaveXml(*m_Settings.Get(), DocumentInMemory().Root()), S_OK) << "no XML";
}

TEST_F(PersistenceTest, LargeXmlTakesATimeThatGrowsWithItWhateverItIs) {
    using Piece = std::function<std::wstring(const std::wstring&)>;
    const Piece pieces[] = {[](auto&) { return L"<abcd>"; }, [](auto& i) { return L"<n" + i; },
        [](auto& i) { return L"<n" + i + L'>'; }, [](auto& i) { return L"< n" + i + L'>'; },
        [](auto& i) { return L"< <n" + i + L"></<n>"; }, [](auto&) { return L"</"; },
        [](auto& i) { return L"<a<" + i + L"></a</a<" + i + L'>'; }, [](auto&) { return L"</></"; },
        [](auto& i) { return L"< /n" + i + L'>'; }, [](auto&) { return L"< a=\"<!--\">"; },
        [](auto& i) { return L"</n" + i + L"><N4 " + i + L'>'; },
        [](auto& i) { return L"< " + std::wstring(400'000, L'n') + i + L'>'; }};
    for (const Piece& piece : pieces) {
        std::wstring text;
        for (int i = 0; text.size() < 1'000'000; ++i) {
            text += piece(std::to_wstring(i));
        }
        LoadXml(*m_Settings.Get(), AnyStream::Make(text + L"<><N13>5</N13>").Get());
        EXPECT_EQ(std::exchange(m_Color, 7), 5) << testing::PrintToString(text.substr(0, 40));
    }
}

TEST_F(PersistenceTest, FullMemoryEndsTheLoadingOfXml) {
    const auto xml = AnyStream::Make(L"<a><b><a>< c><a<b></b></c><N13>5</N13>");
    for (size_t allowed = 0; m_Color != 5 && allowed < 1'000; ++allowed) {
        const FailingNew failing(allowed);
        LoadXml(*m_Settings.Get(), xml.Get());
    }
    EXPECT_EQ(m_Color, 5);
    const auto twice = AnyStream::Make(L"<N13>3</N13><open>< shut><N13>5</N13>");
    for (size_t allowed = 0; allowed < 20; ++allowed) {
        m_Color = 7;
        {
            const FailingNew failing(allowed);
            LoadXml(*m_Settings.Get(), twice.Get());
        }
        EXPECT_NE(m_Color, 3) << "half of it is loaded, with " << allowed << " allocations";
    }
}

TEST_F(PersistenceTest, ObjectOutlivesTheOperationDuringWhichTheHostReleasesIt) {
    const auto stream = AnyStream::Make(L"<N1>1</N1>");
    const std::function<int32_t(Settings&)> operations[] = {
        [&](Settings& object) { return SaveFolders(object, stream.Get()); },
        [&](Settings& object) { return LoadFolders(object, stream.Get()); },
        [&](Settings& object) { return SaveXml(object, stream.Get()); },
        [&](Settings& object) { return LoadXml(object, stream.Get()); }};
    for (const auto& operation : operations) {
        auto mortal = Adopt(new Settings);
        mortal->AddParameter(1, PROPTYPE_BYTE, &m_Byte);
        stream->m_OnUse = [&] {
            mortal.Reset();
            EXPECT_EQ(Settings::s_Living, 2) << "this one and the fixture's";
        };
        EXPECT_EQ(operation(*mortal.Get()), S_OK);
        EXPECT_FALSE(mortal);
        EXPECT_EQ(Settings::s_Living, 1);
    }
}

TEST(XMLTag, HandsOutTheFirstElementAndMovesPastIt) {
    const struct {
        const wchar_t *text, *tag, *attributes, *content, *rest;
    } cases[] = {{L"<H>20</H>tail", L"H", L"", L"20", L"tail"},
        {L"x<H y=2>20</H>", L"H x=1", L" y=2", L"20", L""},
        {L"<A x=1>v</A>", L"A\r", L" x=1", L"v", L""}, {L"<A x=1/>", L"A>B", L" x=1", L"", L""},
        {L"<A ?/>", L"A", L" ?", L"", L""}, {L"<A /?>", L"A", L" ", L"", L""},
        {L"<?xml v=1?><B>1</B>", L"?xml v=1?", L" v=1", L"", L"<B>1</B>"},
        {L"<A>x</A><A>y</A>", L"A", L"", L"x", L"<A>y</A>"}, {L"<A>xyz", L"A", L"", L"", L"xyz"},
        {L"<A", L"A", L"", L"", L""}, {L"<A b", L"A", L" b", L"", L" b"},
        {L"<Column x=1>c</Col>", L"Col", L"umn x=1", L"c", L""},
        {L"<<A>1<</A>", L"A", L"", L"1<", L""}, {L"<aab>1</aab>", L"ab", nullptr, nullptr, nullptr},
        {L"<a>1</a>", L"A", nullptr, nullptr, nullptr}, {L"", L"A", nullptr, nullptr, nullptr},
        {L"-</>", L"", L"", L"", L""}};
    for (const auto& [characters, name, attributesText, contentText, restText] : cases) {
        const GuardedText held(characters);
        const GuardedText heldName(name);
        for (const short advance : {short{0}, short{1}}) {
            CREFString text = held.Ref(), tag = heldName.Ref(), attributes(L"kept"), content;
            const bool isFound = XMLGetTAGGED(text, tag, attributes, content, advance) == S_OK;
            SCOPED_TRACE(testing::PrintToString(characters));
            EXPECT_EQ(isFound, restText != nullptr);
            EXPECT_EQ(Text(content), isFound ? contentText : characters);
            EXPECT_EQ(Text(attributes), isFound ? attributesText : L"kept");
            EXPECT_EQ(Text(text), isFound && advance != 0 ? restText : characters);
        }
    }
}

TEST(XMLIndex, HidesNothingThatASearchFinds) {
    const wchar_t* const words[] = {L"<", L"</", L">", L"a", L"b", L" ", L"<a>", L"</a>", L"< a>",
        L"< /a", L"<a<b>", L"</a</a<b>", L"< <a>", L"<>", L"< a<b>", L"<a<a<b>"};
    std::mt19937 random(20'261'123);
    for (int turn = 0; turn < 20'000; ++turn) {
        const size_t first = random(), count = 2 + random() % std::size(words);
        std::wstring characters;
        for (size_t length = random() % 100; characters.size() < length;) {
            characters += words[(first + random() % count) % std::size(words)];
        }
        const GuardedText held(characters);
        CREFString text = held.Ref(), other = text;
        XMLIndex index;
        XMLFoundTag tag;
        const auto take = [&](CREFString& rest, auto&... with) {
            CREFString attributes, content;
            const int32_t status = XMLGetTAGGED(rest, tag.m_Text, attributes, content, 1, with...);
            rest = status < 0 ? tag.m_Rest : rest;
            return std::tuple(status, rest.m_String, content.m_String, content.m_Length);
        };
        while (XMLFindTag(text, tag)) {
            ASSERT_EQ(take(text, index), take(other)) << testing::PrintToString(characters);
        }
    }
}
