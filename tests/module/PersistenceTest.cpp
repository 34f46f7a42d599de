#include "host/settings/DocumentInMemory.h"
#include "host/settings/XmlFile.h"
#include "host/text/Text.h"
#include "tests/support/TreeTest.h"

#include <random>

// The control's settings in documents and XML.

namespace {

class PersistenceTest : public TreeTest {
protected:
    SmartPtr<XmlFile> SavedXml() const {
        auto xml = XmlFile::Make();
        EXPECT_EQ(Settings()->UIPropInterrogate_SaveXML(nullptr, xml.Get(), 0), S_OK);
        return xml;
    }
    static std::string TextOf(const SmartPtr<XmlFile>& xml) {
        return ToUtf8(CREFString(xml.Get()));
    }
    std::string SavedFolders() const {
        const DocumentInMemory folders;
        EXPECT_EQ(As<IDataPersist>()->Save(folders.Root(), 0), S_OK);
        return folders.Describe();
    }
    void Renew() {
        m_Tree.Reset();
        SetUp();
    }
};

} // namespace

TEST_F(PersistenceTest, DefaultsAreStoredUnderTheirNamesInOrder) {
    EXPECT_EQ(TextOf(SavedXml()),
        "<ElementHeight>15</ElementHeight>\n<TextColor>#4B4B4B</TextColor>\n"
        "<PaperColor>#FFFFFF</PaperColor>\n<BandColor>#000000</BandColor>\n"
        "<UseDefaultStyle>1</UseDefaultStyle>\n"
        "<RootToggleOnIconOnly>0</RootToggleOnIconOnly>\n"
        "<ChildToggleOnIconOnly>1</ChildToggleOnIconOnly>\n");
    EXPECT_EQ(SavedFolders(), "ElementHeight: Flags=03000000 ID=04000000 Value=0F000000\n"
                              "TextColor: Flags=23000000 ID=64000000 Value=4B4B4B00\n"
                              "PaperColor: Flags=23000000 ID=65000000 Value=FFFFFF00\n"
                              "BandColor: Flags=23000000 ID=66000000 Value=00000000\n"
                              "UseDefaultStyle: Flags=13000000 ID=69000000 Value=01000000\n"
                              "RootToggleOnIconOnly: Flags=13000000 ID=93000000 Value=00000000\n"
                              "ChildToggleOnIconOnly: Flags=13000000 ID=94000000 Value=01000000\n"
                              "OpenIcon: Flags=17000000 ID=AA000000 Value=CIFFileEx\n"
                              "ClosedIcon: Flags=17000000 ID=AB000000 Value=CIFFileEx\n");
    const auto xml = XmlFile::Make(); // no folder stream
    for (IDataStream* stream :
        {static_cast<IDataStream*>(nullptr), static_cast<IDataStream*>(xml.Get())}) {
        EXPECT_EQ(As<IDataPersist>()->Save(stream, 0), S_OK);
        EXPECT_EQ(As<IDataPersist>()->Load(stream, 0), S_OK);
    }
    EXPECT_EQ(TextOf(xml), "");
}

TEST_F(PersistenceTest, AnySettingsSurviveASaveAndALoadIntoANewControl) {
    std::mt19937 random(20'240'607);
    for (int turn = 0; turn <= 1000; ++turn) {
        const DocumentInMemory folders;
        As<IDataPersist>()->Save(folders.Root(), 0);
        const std::string stored = folders.Describe();
        const auto xml = SavedXml();
        Renew();
        Settings()->UIPropInterrogate_LoadXML(nullptr, xml.Get(), 0);
        ASSERT_EQ(TextOf(SavedXml()), TextOf(xml)) << turn;
        Renew();
        As<IDataPersist>()->Load(folders.Root(), 0);
        ASSERT_EQ(SavedFolders(), stored) << turn;
        ASSERT_EQ(TextOf(SavedXml()), TextOf(xml)) << turn;
        for (const int id : {4, 100, 101, 102, 105, 147, 148}) {
            m_Tree->Control(id, int32_t(random() >> random() % 32));
        }
        if (random() % 4 == 0) {
            As<IUIPropInterrogateEx>()->ControlEx(170 + int32_t(random() % 2), nullptr);
        }
    }
}
