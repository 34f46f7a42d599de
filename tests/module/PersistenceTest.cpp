#include "host/Document.h"
#include "tests/support/Streams.h"
#include "tests/support/TreeTest.h"

#include <random>

// The control's settings in folder streams and XML.

namespace {

class PersistenceTest : public TreeTest {
protected:
    /// What the control stores, as a folder stream or as XML.
    std::string SavedFolders() const {
        const auto stream = MemoryFolder::Make();
        EXPECT_EQ(As<IDataPersist>()->Save(static_cast<IDataStream*>(stream.Get()), 0), S_OK);
        return stream->Describe();
    }
    std::wstring SavedXml() const {
        const auto stream = MemoryXml::Make();
        Stored()->UIPropInterrogate_SaveXML(nullptr, static_cast<IDataStream*>(stream.Get()), 0);
        return stream->m_Text;
    }
    /// The interface of the settings as a whole, which has no identifier.
    SmartPtr<IUIPropInterrogatePersist> Stored() const {
        return Adopt(static_cast<IUIPropInterrogatePersist*>(As<IUIPropInterrogateEx>().Detach()));
    }
    void Renew() {
        m_Tree.Reset();
        SetUp();
    }
};

} // namespace

TEST_F(PersistenceTest, DefaultsAreStoredUnderTheirNamesInOrder) {
    const auto line = [](const std::string& name, const char* id, const char* flags,
                          const char* value) {
        return name + ": ID=" + id + "000000 Flags=" + flags + "000000 Value=" + value + "\n";
    };
    EXPECT_EQ(SavedFolders(),
        line("ElementHeight", "04", "03", "0F000000") + line("TextColor", "64", "23", "4B4B4B00") +
            line("Color101", "65", "23", "FFFFFF00") + line("Color102", "66", "23", "00000000") +
            line("UseDefaultStyle", "69", "13", "01000000") +
            line("RootToggleOnIconOnly", "93", "13", "00000000") +
            line("ChildToggleOnIconOnly", "94", "13", "01000000") +
            line("OpenIcon", "AA", "17", "object") + line("ClosedIcon", "AB", "17", "object"));
    EXPECT_EQ(SavedXml(), L"<ElementHeight>15</ElementHeight><TextColor>#4B4B4B</TextColor>"
                          L"<Color101>#FFFFFF</Color101><Color102>#000000</Color102>"
                          L"<UseDefaultStyle>1</UseDefaultStyle>"
                          L"<RootToggleOnIconOnly>0</RootToggleOnIconOnly>"
                          L"<ChildToggleOnIconOnly>1</ChildToggleOnIconOnly>");
    const auto persist = As<IDataPersist>();
    const auto xml = MemoryXml::Make(); // no folder stream
    for (IDataStream* stream :
        {static_cast<IDataStream*>(nullptr), static_cast<IDataStream*>(xml.Get())}) {
        EXPECT_EQ(persist->Save(stream, 0), S_OK);
        EXPECT_EQ(persist->Load(stream, 0), S_OK);
    }
    EXPECT_EQ(xml->m_Text, L"");
}

TEST_F(PersistenceTest, AnySettingsSurviveASaveAndALoadIntoANewControl) {
    std::mt19937 random(20'240'607);
    for (int turn = 0; turn < 1000; ++turn) {
        for (const int id : {4, 100, 101, 102, 105, 147, 148}) {
            m_Tree->Control(id, int32_t(random() >> random() % 32));
        }
        if (random() % 4 == 0) {
            As<IUIPropInterrogateEx>()->ControlEx(170 + int32_t(random() % 2), nullptr);
        }
        const std::string folders = SavedFolders();
        const auto xml = MemoryXml::Make(SavedXml());
        auto document = Document::InMemory();
        As<IDataPersist>()->Save(document.Root().Get(), 0);
        Renew();
        Stored()->UIPropInterrogate_LoadXML(nullptr, static_cast<IDataStream*>(xml.Get()), 0);
        ASSERT_EQ(SavedXml(), xml->m_Text) << turn;
        Renew();
        As<IDataPersist>()->Load(document.Root().Get(), 0);
        ASSERT_EQ(SavedFolders(), folders) << turn;
        ASSERT_EQ(SavedXml(), xml->m_Text) << turn;
    }
}
