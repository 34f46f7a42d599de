#include "host/HostInterfaces.h"
#include "host/SuperCollection.h"
#include "host/Variant.h"
#include "tests/host/HostTest.h"

namespace {

class CollectionTest : public HostTest {
protected:
    SmartPtr<SuperCollection> m_Collection = SuperCollection::Make();

    void TearDown() override {
        m_Collection.Reset();
        HostTest::TearDown();
    }
    SmartPtr<Variant> Insert(int32_t index) {
        const auto item = Variant::Make();
        EXPECT_EQ(m_Collection->InsertItem(index, 0, item.Get(), 0, 0), S_OK);
        return item;
    }
};

/// Empties and refills a collection while it dies.
class Meddler final : public HostObject<Meddler, IUnknown> {
public:
    static constexpr const char* kKind = "Meddler";

    explicit Meddler(SuperCollection* collection) : m_Collection(collection) {}
    ~Meddler() {
        m_Collection->RemoveAll();
        m_Collection->Append("put back", Variant::Make().Get());
    }

private:
    SuperCollection* m_Collection; // borrowed
};

} // namespace

TEST_F(CollectionTest, InsertedItems_StandInTheOrderAskedFor) {
    const auto last = Insert(100);
    const auto first = Insert(0);
    const auto second = Insert(1);
    const auto appended = Insert(-1);
    EXPECT_TRUE(ItemAt(m_Collection.Get(), 0) == first.Get());
    EXPECT_TRUE(ItemAt(m_Collection.Get(), 1) == second.Get());
    EXPECT_TRUE(ItemAt(m_Collection.Get(), 2) == last.Get());
    EXPECT_TRUE(ItemAt(m_Collection.Get(), 3) == appended.Get());
    EXPECT_LT(m_Collection->InsertItem(0, 0, nullptr, 0, 0), 0);
    EXPECT_EQ(CountOf(m_Collection.Get()), 4);
}

TEST_F(CollectionTest, IndexOutside_FailsAndEmptiesTheResults) {
    Insert(0);
    const auto text = MakeString(L"x");
    for (const int32_t index : {-1, 1, INT32_MAX, INT32_MIN}) {
        IUnknown* item = m_Collection->Identity();
        IString* name = text.Get();
        int32_t flags = 77;
        EXPECT_LT(m_Collection->GetItem(index, &item), 0);
        EXPECT_LT(m_Collection->GetItemName(index, &name), 0);
        EXPECT_LT(m_Collection->GetItemFlags(index, &flags), 0);
        EXPECT_LT(m_Collection->SetItemFlags(index, 1), 0);
        EXPECT_EQ(item, nullptr);
        EXPECT_EQ(name, nullptr);
    }
}

TEST_F(CollectionTest, Flags_StayWithTheirItem) {
    Insert(0);
    m_Collection->SetItemFlags(0, -1);
    Insert(0);
    int32_t flags = 0;
    EXPECT_EQ(m_Collection->GetItemFlags(1, &flags), S_OK);
    EXPECT_EQ(flags, -1);
    EXPECT_EQ(m_Collection->GetItemFlags(0, &flags), S_OK);
    EXPECT_EQ(flags, 0);
}

TEST_F(CollectionTest, AddedEntry_KeepsItsThreeStrings) {
    const auto name = MakeString(L"Seite \u00e4\U0001F600");
    m_Collection->AddEntry(name.Get(), MakeString(L"Module.Page").Get(), nullptr, 0);
    EXPECT_EQ(NameAt(m_Collection.Get(), 0), "Seite \u00e4\U0001F600");
    const auto entry = Query<IHostEntry>(ItemAt(m_Collection.Get(), 0).Get());
    SmartPtr<IString> text;
    EXPECT_EQ(entry->GetText(1, text.Receive()), S_OK);
    EXPECT_EQ(TextOf(text.Get()), "Module.Page");
    EXPECT_EQ(entry->GetText(2, text.Receive()), S_OK);
    EXPECT_FALSE(text);
    EXPECT_LT(entry->GetText(3, text.Receive()), 0);
}

TEST_F(CollectionTest, ChainOf100000_DiesWithoutExhaustingTheStack) {
    SmartPtr<SuperCollection> inner = m_Collection;
    for (int i = 0; i < 100000; ++i) {
        const auto next = SuperCollection::Make();
        inner->Append("level", next->Identity());
        inner = next;
    }
}

TEST_F(CollectionTest, CollectionInItself_DiesWhenItIsEmptied) {
    m_Collection->Append("self", m_Collection->Identity());
    m_Collection->RemoveAll();
    EXPECT_EQ(CountOf(m_Collection.Get()), 0);
    EXPECT_EQ(m_Collection->AddRef(), 2);
    EXPECT_EQ(m_Collection->Release(), 1);
}

TEST_F(CollectionTest, ItemThatMeddlesWhileDying_LeavesTheCollectionUsable) {
    m_Collection->Append("one", Meddler::Make(m_Collection.Get()).Get());
    m_Collection->Append("two", Meddler::Make(m_Collection.Get()).Get());
    m_Collection->RemoveAll();
    EXPECT_EQ(NameAt(m_Collection.Get(), 0), "put back");
    EXPECT_EQ(CountOf(m_Collection.Get()), 1);
}

TEST_F(CollectionTest, HostString_KeepsNulAndEndsInOne) {
    const auto text = MakeString(L"");
    EXPECT_EQ(text->SetString({3, L"a\0b"}), S_OK);
    EXPECT_EQ(text->AppendString(Ref(L"cd")), S_OK);
    EXPECT_LT(text->SetString({-1, L"x"}), 0);
    EXPECT_LT(text->AppendString({2, nullptr}), 0);
    wchar_t* characters = nullptr;
    int32_t length = 0;
    text->GetString(&characters, &length);
    EXPECT_EQ(std::wstring(characters, 6), std::wstring(L"a\0bcd\0", 6));
    EXPECT_EQ(length, 5);
    EXPECT_EQ(text->AppendString(Refer(text.Get())), S_OK); // its own characters
    EXPECT_EQ(TextOf(text.Get()), std::string("a\0bcda\0bcd", 10));
}

TEST(TextTest, IllFormedUtf8_BecomesReplacementCharacters) {
    EXPECT_EQ(
        ToUtf8(Refer(ToWide("plain \u00e4\u20ac\U0001F600"))), "plain \u00e4\u20ac\U0001F600");
    EXPECT_EQ(ToWide("\xff"
                     "a\xc3"),
        L"\uFFFDa\uFFFD");
    EXPECT_EQ(ToWide("\xc0\xaf"), L"\uFFFD\uFFFD");           // overlong
    EXPECT_EQ(ToWide("\xed\xa0\x80").front(), L'\uFFFD');     // surrogate
    EXPECT_EQ(ToWide("\xf4\x90\x80\x80").front(), L'\uFFFD'); // past the last code point
    const std::wstring wide{wchar_t(0xD800), wchar_t(0x110000), wchar_t(-1), L'\x1b', L'x'};
    EXPECT_EQ(ToUtf8(Refer(wide)), "\uFFFD\uFFFD\uFFFD\x1bx");
    EXPECT_EQ(ToPrintable(Refer(wide)), "\uFFFD\uFFFD\uFFFD\uFFFDx");
}
