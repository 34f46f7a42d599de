#include "host/SuperCollection.h"
#include "host/Variant.h"
#include "tests/host/HostTest.h"

using CollectionTest = HostTest;

TEST_F(CollectionTest, ChainOf100000DiesWithoutExhaustingTheStack) {
    const auto collection = SuperCollection::Make();
    SmartPtr<SuperCollection> inner = collection;
    for (int i = 0; i < 100000; ++i) {
        const auto next = SuperCollection::Make();
        inner->Append("level", next->Identity());
        inner = next;
    }
}

TEST_F(CollectionTest, CollectionInItselfDiesWhenItIsEmptied) {
    const auto collection = SuperCollection::Make();
    collection->Append("itself", collection->Identity());
    collection->RemoveAll();
    EXPECT_EQ(collection->AddRef(), 2);
    EXPECT_EQ(collection->Release(), 1);
}

TEST(TextTest, IllFormedTextBecomesReplacementCharacters) {
    EXPECT_EQ(ToWide("\u20ac\U0001F600\xff\x61\xc3"), L"\u20ac\U0001F600\uFFFDa\uFFFD");
    for (const char* text : {"\xc0\xaf", "\xed\xa0\x80", "\xf4\x90\x80\x80"}) {
        EXPECT_EQ(ToWide(text).front(), L'\uFFFD') << "overlong, a surrogate, too great";
    }
    const std::wstring wide{wchar_t(0xD800), wchar_t(0x110000), wchar_t(-1), L'\x1b', L'\u20ac'};
    EXPECT_EQ(ToUtf8(Refer(wide)), "\uFFFD\uFFFD\uFFFD\x1b\u20ac");
    EXPECT_EQ(ToPrintable(Refer(wide)), "\uFFFD\uFFFD\uFFFD\uFFFD\u20ac");
}
