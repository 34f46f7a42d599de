#include "host/Document.h"
#include "host/Text.h"
#include "host/XmlFile.h"
#include "tests/support/TreeTest.h"

#include <random>

// The control's settings in documents and XML.

namespace {

constexpr int kNumbers[] = {4, 100, 101, 102, 105, 147, 148};

class PersistenceTest : public TreeTest {
protected:
    SmartPtr<XmlFile> SavedXml() const {
        auto xml = XmlFile::Make();
        EXPECT_EQ(Settings()->UIPropInterrogate_SaveXML(nullptr, xml.Get(), 0), S_OK);
        return xml;
    }
    static std::string TextOf(const SmartPtr<XmlFile>& xml) { return ToUtf8(Refer(xml.Get())); }
    std::string Numbers() const {
        std::string numbers;
        for (const int id : kNumbers) {
            numbers = Line(numbers, {Value(id)});
        }
        return numbers;
    }
    /// Which of the two icons the control has.
    std::pair<bool, bool> Icons() const {
        SmartPtr<IUnknown> open, closed;
        As<IUIPropInterrogateEx>()->InquireEx(170, open.Receive());
        As<IUIPropInterrogateEx>()->InquireEx(171, closed.Receive());
        return {bool(open), bool(closed)};
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
        "<Color101>#FFFFFF</Color101>\n<Color102>#000000</Color102>\n"
        "<UseDefaultStyle>1</UseDefaultStyle>\n"
        "<RootToggleOnIconOnly>0</RootToggleOnIconOnly>\n"
        "<ChildToggleOnIconOnly>1</ChildToggleOnIconOnly>\n");
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
    for (int turn = 0; turn < 1000; ++turn) {
        for (const int id : kNumbers) {
            m_Tree->Control(id, int32_t(random() >> random() % 32));
        }
        if (random() % 4 == 0) {
            As<IUIPropInterrogateEx>()->ControlEx(170 + int32_t(random() % 2), nullptr);
        }
        const auto numbers = Numbers();
        const auto icons = Icons();
        const auto xml = SavedXml();
        const auto document = Document::InMemory();
        As<IDataPersist>()->Save(document.Root().Get(), 0);
        Renew();
        Settings()->UIPropInterrogate_LoadXML(nullptr, xml.Get(), 0);
        ASSERT_EQ(Numbers(), numbers) << turn;
        Renew();
        As<IDataPersist>()->Load(document.Root().Get(), 0);
        ASSERT_EQ(Numbers(), numbers) << turn;
        ASSERT_EQ(Icons(), icons) << turn;
    }
}
