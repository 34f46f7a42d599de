#include "tests/framework/FrameworkTest.h"
#include "tests/support/Streams.h"

namespace {

struct Settings final
    : Component<Settings, IUIPropInterrogateImpl<Settings, IUIPropInterrogateEx, 10l>> {
    using IUIPropInterrogateImpl::AddParameter;
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
        const auto name = (index < 1000 ? L"N" : L"T") + std::to_wstring(index % 1000);
        *item = index == 2   ? nullptr
                : index == 3 ? Thing::Make().Detach()
                             : static_cast<IUnknown*>(ISCreate(name.c_str()));
        return S_OK;
    }
};

/// Parameters of every type; the number is the type, or the type and ten times what follows.
struct PersistenceTest : FrameworkTest {
    PersistenceTest() {
        const std::tuple<int32_t, uint32_t, void*> parameters[] = {{7, 7, &m_Object},
            {1, 1, &m_Byte}, {2, 2, &m_Short}, {13, 0x23, &m_Color}, {3, 3, &m_Long},
            {23, 3 | PROPFLAG_TRANSIENT, &m_Transient}, {4, 4, &m_Float}, {5, 5, &m_Double},
            {6, 6, &m_String}, {16, 6 | PROPFLAG_FILENAME, &m_File}, {8, 8, &m_Long}};
        for (const auto& [id, flags, field] : parameters) {
            m_Settings->AddParameter(id, flags, field);
        }
        m_String.Attach(ISCreate(L"<text>"));
        m_File.Attach(ISCreate((Install() + L"/icons/x.png").c_str()));
    }
    static std::wstring Install() {
        SmartPtr<IString> path;
        FILENAMEGetInstallPath(path.Receive());
        return Text(path.Get());
    }
    void LoadXml(std::wstring text) {
        const auto xml = MemoryXml::Make(std::move(text));
        EXPECT_EQ(m_Settings->UIPropInterrogate_LoadXML(
                      m_Names.Get(), Query<IDataStream>(xml->Identity()).Get(), 0),
            S_OK);
    }

    uint8_t m_Byte = 0xFE;
    int16_t m_Short = -2;
    int32_t m_Long = 15, m_Color = 0x123456, m_Transient = 1;
    float m_Float = 2.5F;
    double m_Double = -0.1;
    SmartPtr<IString> m_String, m_File;
    SmartPtr<IUnknown> m_Object;
    SmartPtr<Settings> m_Settings = Adopt(new Settings);
    SmartPtr<Names> m_Names = Names::Make();
};

} // namespace

TEST_F(PersistenceTest, FoldersHoldEveryParameterByteForByteInTheTablesOrder) {
    const auto stream = MemoryFolder::Make();
    stream->m_Refused = "T13";
    EXPECT_EQ(m_Settings->UIPropInterrogate_SaveFolderStream(m_Names.Get(), stream.Get(), 0), S_OK);
    EXPECT_EQ(stream->Describe(), "7: ID=07000000 Flags=07000000 Value=null\n"
                                  "T1: ID=01000000 Flags=01000000 Value=FE000000\n"
                                  "T2: ID=02000000 Flags=02000000 Value=FEFFFFFF\n"
                                  "T3: ID=03000000 Flags=03000000 Value=0F000000\n"
                                  "T4: ID=04000000 Flags=04000000 Value=0000000000000440\n"
                                  "T5: ID=05000000 Flags=05000000 Value=000000A09999B9BF\n"
                                  "T6: ID=06000000 Flags=06000000 Value=<text>\n"
                                  "T16: ID=10000000 Flags=06010000 Value=icons/x.png\n");
    EXPECT_EQ(m_Settings->UIPropInterrogate_SaveFolderStream(nullptr, nullptr, 0), S_OK);
}

TEST_F(PersistenceTest, FoldersAreFoundByTheirNumberAndTypeAndSkippedWithoutThem) {
    const auto saved = MemoryFolder::Make();
    m_Object = Thing::Make()->Identity();
    m_Settings->UIPropInterrogate_SaveFolderStream(nullptr, saved.Get(), 0);
    const auto object = std::exchange(m_Object, {});
    m_Byte = 0, m_Short = 0, m_Long = 0, m_Color = 0, m_Float = 0, m_Double = 0;
    m_String.Reset();
    m_File.Reset();

    std::reverse(saved->m_Folders.begin(), saved->m_Folders.end());
    const auto add = [&](int id, uint32_t flags, const std::string& value,
                         const char* entry = "ID") {
        saved->m_Folders.insert(saved->m_Folders.begin(), MemoryFolder::Make());
        saved->m_Folders[0]->m_Entries = {{entry, std::string(reinterpret_cast<char*>(&id), 4)},
            {"Flags", std::string(reinterpret_cast<char*>(&flags), 4)}, {"Value", value}};
    };
    add(999, 3, "abcd");
    add(23, 3, "abcd"); // transient
    saved->m_Folders.push_back(saved->m_Folders[0]);
    EXPECT_EQ(m_Settings->UIPropInterrogate_LoadFolderStream(saved.Get(), 0), S_OK);
    EXPECT_EQ(std::tuple(m_Byte, m_Short, m_Long, m_Color, m_Transient),
        std::tuple(0xFE, -2, 15, 0x123456, 1));
    EXPECT_EQ(std::pair(m_Float, m_Double), std::pair(2.5F, double{-0.1F}));
    EXPECT_EQ(m_Object.Get(), object.Get());
    EXPECT_EQ(Text(m_String.Get()), L"<text>");
    EXPECT_EQ(Text(m_File.Get()), Install() + L"/icons/x.png");

    saved->m_Folders.clear();
    add(2, 2 | PROPFLAG_COLOR, {7, 0, 0, 0}); // loads: it is of the type, and comes last
    add(3, 5, "abcdefgh");                    // another type
    add(3, 3, "abc");                         // no value of that size
    add(4, 4, "abc");
    add(3, 3, "abcd", "Id");
    add(6, 6, "text");
    saved->m_Folders[0]->m_Entries.pop_back(); // no text: the empty one
    add(7, 7, "");                             // no object: none
    EXPECT_EQ(m_Settings->UIPropInterrogate_LoadFolderStream(saved.Get(), 0), S_OK);
    EXPECT_EQ(std::tuple(m_Short, m_Long, m_Float), std::tuple(7, 15, 2.5F));
    EXPECT_TRUE(m_String && Text(m_String.Get()).empty());
    EXPECT_FALSE(m_Object);
}

TEST_F(PersistenceTest, XmlHoldsNumbersAndTextsUnderTheirNames) {
    const auto xml = MemoryXml::Make();
    const auto stream = Query<IDataStream>(xml->Identity());
    m_Settings->UIPropInterrogate_SaveXML(nullptr, stream.Get(), 0);
    EXPECT_EQ(xml->m_Text, L"") << "there is no string table";
    EXPECT_EQ(m_Settings->UIPropInterrogate_SaveXML(m_Names.Get(), stream.Get(), 0), S_OK);
    EXPECT_EQ(xml->m_Text, L"<N1>254</N1><(none)>-2</(none)><N13>#123456</N13><(none)>15</(none)>"
                           L"<N4>2.500000</N4><N5>-0.100000</N5><N6><text></N6>"
                           L"<N16>icons/x.png</N16>");
    const std::wstring text = xml->m_Text;
    m_Byte = 0, m_Color = 0, m_Float = 0, m_Double = 0;
    m_String.Reset();
    m_File.Reset();
    LoadXml(text);
    EXPECT_EQ(std::tuple(m_Byte, m_Color, m_Float, m_Double),
        std::tuple(254, 0x123456, 2.5F, double{-0.1F}));
    EXPECT_EQ(Text(m_String.Get()), L"<text>");
    EXPECT_EQ(Text(m_File.Get()), Install() + L"/icons/x.png");
    for (const int32_t color : {0, 1, -1, INT32_MIN, INT32_MAX, 0x01000000}) {
        xml->m_Text.clear();
        m_Color = color;
        m_Settings->UIPropInterrogate_SaveXML(m_Names.Get(), stream.Get(), 0);
        m_Color = ~color;
        LoadXml(xml->m_Text);
        EXPECT_EQ(m_Color, color);
    }
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
        LoadXml(text);
        EXPECT_EQ(m_Color, color) << testing::PrintToString(text);
    }
    EXPECT_EQ(std::tuple(m_Short, m_Long, m_Transient), std::tuple(-2, 15, 1));
    const auto folder = MemoryFolder::Make(); // no XML
    EXPECT_EQ(m_Settings->UIPropInterrogate_LoadXML(m_Names.Get(), nullptr, 0), S_OK);
    EXPECT_EQ(m_Settings->UIPropInterrogate_SaveXML(
                  m_Names.Get(), Query<IDataStream>(folder->Identity()).Get(), 0),
        S_OK);
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
        const HeapText held(characters);
        const HeapText heldName(name);
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
