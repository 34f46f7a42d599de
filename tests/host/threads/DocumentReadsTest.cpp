#include "tests/host/threads/ReadsTest.h"

#include "framework/interfaces/TreeInterfaces.h"
#include "host/data/Expansion.h"
#include "host/documents/DocumentBranch.h"
#include "host/documents/JsonText.h"

#include <future>
#include <new>

// Levels of documents that are read beside the window's thread.

namespace {

constexpr size_t kItems = 20'000;

/// Has one part that is read in steps of a row each, as a test wants.
class SteppedText final : public DocumentText {
public:
    explicit SteppedText(std::function<void(size_t step)> step)
        : DocumentText(std::string(kItems, ' ')), m_Step(std::move(step)) {}

private:
    size_t ReadRows(const DocumentPart& part, const RowPlace&, RowSink& rows,
        ReadProgress* progress) const override {
        if (part.IsWhole()) {
            rows.Add({.m_Label = "part",
                .m_Kind = ItemKind::kList,
                .m_IsBranch = true,
                .m_Part = {kItems / 2, kItems}});
            return 0;
        }
        const auto isWanted = [&](size_t at) {
            return at < part.m_End && (!progress || progress->Advance({at, kItems}));
        };
        bool isMoreWanted = true;
        for (size_t at = part.m_Begin; isMoreWanted && isWanted(at); ++at) {
            m_Step(at - part.m_Begin);
            isMoreWanted = rows.Add({.m_Label = std::to_string(at), .m_Kind = ItemKind::kNumber});
        }
        return 0;
    }

    std::function<void(size_t step)> m_Step;
};

class DocumentReadsTest : public ReadsTest {
protected:
    SmartPtr<ISuperCollection> Open(DocumentTextPtr text, bool isBeside = true) {
        const auto root = DocumentBranch::MakeRoot(std::make_shared<DocumentHelpers>(
            std::move(text), "document", isBeside ? m_Reads : nullptr));
        root->SetItemFlags(0, NODE_VISIBLE | 1);
        OpenLevels(root.Get(), 1);
        return root;
    }
    /// What is below the first item, which is being read until this returns.
    SmartPtr<ISuperCollection> ReadFirst(const SmartPtr<ISuperCollection>& root) {
        const auto part = CollectionBelow(root.Get(), 0);
        EXPECT_EQ(Names(*part.Get()), std::vector<std::string>{"reading\u2026"});
        ReadOn(*root.Get(), AddressOf(part));
        return part;
    }
    /// By which it asks.
    static const void* AddressOf(const SmartPtr<ISuperCollection>& part) {
        return static_cast<DocumentBranch*>(part.Get());
    }
    static std::vector<std::pair<std::string, int32_t>> Rows(ISuperCollection* root) {
        std::vector<std::pair<std::string, int32_t>> rows;
        VisitRows(root, [&](ISuperCollection* collection, int32_t index, int32_t flags) {
            SmartPtr<IString> name;
            collection->GetItemName(index, name.Receive());
            rows.emplace_back(ToUtf8(CREFString(name.Get())), flags);
            return true;
        });
        return rows;
    }
};

} // namespace

TEST_F(DocumentReadsTest, PartSaysThatItIsReadAndThenIsLikeOneReadAtOnce) {
    const std::string text = "[[" + Repeated("{\"a\": 1},", kItems) + "2]]";
    const auto root = Open(IndexJson(text));
    ReadFirst(root);
    EXPECT_EQ(Rows(root.Get()), Rows(Open(IndexJson(text), false).Get()));
    EXPECT_EQ(Rows(root.Get()).size(), kItems + 2);
    EXPECT_EQ(m_Reads->TakeNews(), "");
    EXPECT_FALSE(RereadTree(root.Get())) << "what is read never changes";
}

TEST_F(DocumentReadsTest, StoppedItIsShownUpToThere) {
    std::promise<void> isHeld;
    std::promise<void> mayGoOn;
    const auto root = Open(std::make_shared<SteppedText>([&](size_t step) {
        if (step == kItems / 4) {
            isHeld.set_value();
            mayGoOn.get_future().wait();
        }
    }));
    isHeld.get_future().wait();
    EXPECT_EQ(m_Reads->TakeNews(), "document, 50 %");
    m_Reads->Stop();
    mayGoOn.set_value();
    EXPECT_EQ(Names(*ReadFirst(root).Get()).size(), kItems / 4 + 1);
}

TEST_F(DocumentReadsTest, WhatMemoryDidNotHoldCanBeOpenedAgain) {
    bool fails = true;
    const auto root = Open(std::make_shared<SteppedText>([&](size_t step) {
        if (step == 5 && std::exchange(fails, false)) {
            throw std::bad_alloc();
        }
    }));
    const auto part = ReadFirst(root);
    EXPECT_TRUE(Names(*part.Get()).empty());
    EXPECT_EQ(Query<IFileArchive>(part.Get())->Populate(), S_OK);
    EXPECT_EQ(Names(*ReadFirst(root).Get()).size(), kItems / 2);
}

TEST_F(DocumentReadsTest, PartThatIsDroppedIsForgotten) {
    std::promise<void> mayGoOn;
    std::shared_future<void> goesOn(mayGoOn.get_future());
    auto root = Open(std::make_shared<SteppedText>([goesOn](size_t) { goesOn.wait(); }));
    const void* dropped = AddressOf(CollectionBelow(root.Get(), 0));
    EXPECT_TRUE(m_Reads->IsBegun(dropped));
    root.Reset();
    EXPECT_FALSE(m_Reads->IsBegun(dropped));
    mayGoOn.set_value();
}
