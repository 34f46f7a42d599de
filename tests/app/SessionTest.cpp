#include "app/session/Session.h"
#include "framework/interfaces/TreeProperties.h"
#include "host/data/Expansion.h"
#include "host/folders/FolderWatch.h"
#include "host/sources/Source.h"
#include "tests/support/HostTest.h"
#include "tests/support/TreeTest.h"

#include <sstream>

// The host's own part in using a control: the keys.

namespace {

constexpr Size kFourRows{200, 4 * 22};

using SessionTest = TreeTest;

/// Counts how often its items and flag words are read.
class CountingRows final : public HostObject<CountingRows, SuperCollectionBase, CollectionVersion> {
public:
    static constexpr const char* kKind = "CountingRows";
    int32_t GetItem(int32_t index, IUnknown** item) override {
        ++m_Reads;
        return SuperCollectionBase::GetItem(index, item);
    }
    int32_t GetItemFlags(int32_t index, int32_t* flags) override {
        ++m_Reads;
        return SuperCollectionBase::GetItemFlags(index, flags);
    }
    int m_Reads = 0;
};

} // namespace

TEST_F(SessionTest, KeysWalkThroughTheTreeAndOpenIt) {
    using enum Key;
    const std::tuple<Key, const char*, const char*> steps[] = {
        {kDown, "B", "A B C"}, // the first row shown
        {kUp, "A", "A B C"}, {kUp, "A", "A B C"}, {kEnd, "C", "A B C"}, {kHome, "A", "A B C"},
        {kRight, "A", "A a1 a2 B C"}, {kRight, "a1", "A a1 a2 B C"},
        {kRight, "a1", "A a1 aa a2 B C"}, {kRight, "aa", "A a1 aa a2 B C"},
        {kRight, "aa", "A a1 aa a2 B C"}, {kLeft, "a1", "A a1 aa a2 B C"},
        {kHome, "A", "A a1 aa a2 B C"}, {kLeft, "A", "A B C"}, {kLeft, "A", "A B C"},
        {kRight, "A", "A a1 aa a2 B C"}, // what was open below is again
        {kEnter, "A", "A B C"}, {kDown, "B", "A B C"}, {kEnter, "B", "A B C"}};
    Bind("A\n a1\n  aa\n a2\nB\nC\n c1");
    std::ostringstream record;
    Session session(m_Tree.Get(), kFourRows, record);
    DrawPicture({m_Tree.Get(), kFourRows}); // the control learns the indentation
    const auto press = [&](Key key) { return session.Feed(KeyInput{key}), SelectedLabel(); };
    m_Tree->Control(PROP_SCROLLPOS, 1);
    for (const auto& [key, selected, rows] : steps) {
        EXPECT_EQ(press(key), selected) << rows;
        EXPECT_EQ(Rows(), rows) << selected;
    }
    session.Feed(PointerInput{POINTERSTATE_PRIMARY, POINTERACTION_PRESS, KEYS_CONTROL, 60, 5});
    session.Feed(PointerInput{POINTERSTATE_PRIMARY, POINTERACTION_RELEASE, KEYS_CONTROL, 60, 5});
    EXPECT_NE(Flags("A") & NODE_SELECTED, 0);
    EXPECT_EQ(session.CountSelected(), 2);
    press(kEnd);
    EXPECT_EQ(Flags("A") & NODE_SELECTED, 0) << "a key selects one row";
    EXPECT_EQ(session.CountSelected(), 1);
}

TEST_F(SessionTest, KeysBringTheSelectedRowIntoView) {
    using enum Key;
    const std::tuple<Key, const char*, int> steps[] = {{kPageDown, "0", 0}, {kPageDown, "4", 1},
        {kEnd, "9", 6}, {kPageUp, "5", 5}, {kPageUp, "1", 1}, {kPageUp, "0", 0}};
    Bind("0\n1\n2\n3\n4\n5\n6\n7\n8\n9");
    std::ostringstream record;
    Session session(m_Tree.Get(), kFourRows, record);
    DrawPicture({m_Tree.Get(), kFourRows}); // the control learns the indentation
    const auto press = [&](Key key) { return session.Feed(KeyInput{key}), SelectedLabel(); };
    for (const auto& [key, selected, firstRow] : steps) {
        EXPECT_EQ(press(key), selected);
        EXPECT_EQ(Value(PROP_SCROLLPOS), firstRow) << selected;
    }
    m_Tree->Control(PROP_SCROLLPOS, 9);
    EXPECT_EQ(press(kHome), "0") << "selected, but out of view";
    EXPECT_EQ(Value(PROP_SCROLLPOS), 0);
    m_Tree->Control(4, 0); // no row height
    EXPECT_EQ(press(kPageDown), "1");
}

TEST_F(SessionTest, TypingGoesToTheNextLabelThatBeginsSo) {
    const std::tuple<const char*, int, const char*, const char*> steps[] = {
        {"b", 0, "Bee", "Ant Bee Bat Cat Dog"}, {"A", 500, "Bat", "Ant Bee Bat Cat Dog"},
        {"b", 5000, "Bee", "Ant Bee Bat Cat Dog"}, {"b", 999, "Bat", "Ant Bee Bat Cat Dog"},
        {"b", 999, "Bee", "Ant Bee Bat Cat Dog"}, {"x", 999, "Bee", "Ant Bee Bat Cat Dog"},
        {"-", 500, "Bee", "Ant Bee Bat Cat Dog"}, {"c", 1000, "Cat", "Ant Bee Bat Cat Dog"},
        {"+", 1000, "Cat", "Ant Bee Bat Cat Claw Dog"}, {"-", 0, "Cat", "Ant Bee Bat Cat Dog"},
        {"*", 0, "Cat", "Ant Bee Bee's Bat Cat Claw Dog"},
        {"claw", 0, "Claw", "Ant Bee Bee's Bat Cat Claw Dog"}};
    Bind("Ant\nBee\n Bee's\nBat\nCat\n Claw\nDog");
    std::ostringstream record;
    Session session(m_Tree.Get(), kFourRows, record);
    DrawPicture({m_Tree.Get(), kFourRows});
    for (const auto& [text, pause, selected, rows] : steps) {
        m_Clock.Advance(int64_t{pause} * 1000);
        session.Feed(TypedInput{text});
        EXPECT_EQ(SelectedLabel(), selected) << text;
        EXPECT_EQ(Rows(), rows) << text;
    }
    session.Feed(KeyInput{Key::kBackspace});
    EXPECT_EQ(SelectedLabel(), "Cat");
}

TEST_F(SessionTest, SearchGoesThroughAllThatIsReadAndOpensTheWayToIt) {
    Bind("Fruit\n apple\n pear\nTools\n Drill\n  bit\n saw\nApril");
    std::ostringstream record;
    Session session(m_Tree.Get(), kFourRows, record);
    const auto type = [&](const char* text) {
        return session.Feed(TypedInput{text}), SelectedLabel();
    };
    const auto press = [&](Key key) { return session.Feed(KeyInput{key}), SelectedLabel(); };
    EXPECT_EQ(type("/"), "");
    EXPECT_EQ(type("a"), "apple");
    EXPECT_EQ(type("P"), "apple") << "what is found already";
    EXPECT_EQ(press(Key::kDown), "April");
    EXPECT_EQ(press(Key::kEnter), "apple") << "on from the first";
    EXPECT_EQ(press(Key::kUp), "April") << "and back from the last";
    EXPECT_EQ(type("x"), "April");
    EXPECT_FALSE(session.Searching()->HasFound());
    EXPECT_EQ(press(Key::kBackspace), "April");
    EXPECT_TRUE(session.Searching()->HasFound());
    EXPECT_EQ(Rows(), "Fruit apple pear Tools April");
    press(Key::kEscape);
    EXPECT_EQ(session.Searching(), nullptr);
    EXPECT_EQ(type("/bit"), "bit");
    EXPECT_EQ(Rows(), "Fruit apple pear Tools Drill bit saw April");
    EXPECT_EQ(press(Key::kLeft), "Drill") << "another key ends the search and does what it does";
    EXPECT_EQ(session.Searching(), nullptr);
}

TEST_F(SessionTest, SearchThatTakesLongGoesOnInTurnsAndAnewWhenTheTreeChanges) {
    const TemporaryFolder folder;
    std::ofstream(folder / "z").flush();
    for (int i = 0; i < 2000; ++i) {
        std::ofstream(folder / std::to_string(i)).flush();
    }
    const auto failures = std::make_shared<ReadFailures>();
    const auto watch = std::make_shared<FolderWatch>();
    BindCollection(OpenSource((folder / "").string(), SourceKind::kByContent, {failures, watch}));
    std::ostringstream record;
    Session session(m_Tree.Get(), kFourRows, record);
    session.LimitTurns(std::chrono::milliseconds(0));
    session.Feed(TypedInput{"/z"});
    EXPECT_TRUE(session.IsAtWork());
    EXPECT_EQ(SelectedLabel(), "");
    session.GoOn();
    std::ofstream(folder / "0z").flush();
    watch->Take();
    session.ReadChanged();
    while (session.IsAtWork()) {
        session.GoOn();
    }
    EXPECT_EQ(SelectedLabel(), "0z");
    EXPECT_NE(record.str().find("search ended -> 0"), std::string::npos);
}

TEST_F(SessionTest, OpeningManyFoldersGoesOnInTurnsUntilEscape) {
    std::string text;
    std::string opened;
    for (int i = 0; i < 9; ++i) {
        text += std::to_string(i) + "\n  leaf\n";
        opened += std::to_string(i) + " leaf ";
    }
    Bind(text);
    std::ostringstream record;
    Session session(m_Tree.Get(), kFourRows, record);
    session.LimitTurns(std::chrono::milliseconds(0));
    session.Feed(TypedInput{"4"});
    session.Feed(KeyInput{Key::kAsterisk});
    EXPECT_EQ(Rows(), "0 leaf 1 2 3 4 5 6 7 8") << "a turn opens one at least";
    session.GoOn();
    session.Feed(KeyInput{Key::kDown}); // is answered meanwhile
    session.Feed(KeyInput{Key::kEscape});
    EXPECT_FALSE(session.IsAtWork());
    EXPECT_EQ(Rows(), "0 leaf 1 leaf 2 3 4 5 6 7 8");
    EXPECT_EQ(SelectedLabel(), "5");
    session.Feed(KeyInput{Key::kAsterisk});
    m_Root->InsertItem(0, 0, Outline("new").Get(), 0, 0); // hidden, and moves all others on
    while (session.IsAtWork()) {
        session.GoOn();
    }
    EXPECT_EQ(Rows() + " ", opened);

    Bind("A\n a1\n  x\n a2\n  y\nB\n b1");
    session.Feed(KeyInput{Key::kHome});
    session.Feed(KeyInput{Key::kAsterisk});
    session.Feed(KeyInput{Key::kDown});
    session.Feed(KeyInput{Key::kAsterisk}); // within the level that is being opened
    while (session.IsAtWork()) {
        session.GoOn();
    }
    EXPECT_EQ(Rows(), "A a1 x a2 y B b1");
}

TEST_F(SessionTest, ReadingAgainInTurnsKeepsWhatIsClosedMeanwhile) {
    const TemporaryFolder folder;
    for (const char* name : {"a", "b"}) {
        std::filesystem::create_directory(folder / name);
        std::ofstream(folder / name / "old").flush();
    }
    BindCollection(OpenSource((folder / "").string()));
    OpenLevels(m_Root.Get(), 1);
    EXPECT_EQ(Rows(), "a old b old");
    std::ostringstream record;
    Session session(m_Tree.Get(), kFourRows, record);
    session.LimitTurns(std::chrono::milliseconds(0));
    for (const char* name : {"a", "b"}) {
        std::ofstream(folder / name / "new").flush();
    }
    session.Feed(KeyInput{Key::kF5}); // reads the root, in its first turn
    EXPECT_TRUE(session.IsReadingAgain());
    ToggleNode(m_Root.Get(), 0);
    while (session.IsReadingAgain()) {
        session.ReadChanged();
    }
    EXPECT_EQ(Rows(), "a b new old");
    ToggleNode(m_Root.Get(), 0);
    EXPECT_EQ(Rows(), "a new old b new old");
}

TEST_F(SessionTest, ReadingAllAgainThatIsStoppedReadsNothingMore) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder / "a/deep");
    int looks = 0;
    const auto look = [&](const std::string& path, const FolderPath* step, ReadProgress* progress) {
        ++looks;
        return ScanFolder(path, step, progress);
    };
    const auto root = FolderSource::Make((folder / "").string(), FolderHelpers{.m_Look = look});
    root->Populate();
    BindCollection(SmartPtr<ISuperCollection>(root.Get()));
    OpenLevels(root.Get(), 1);
    EXPECT_EQ(looks, 2);
    std::ostringstream record;
    Session session(m_Tree.Get(), kFourRows, record);
    session.LimitTurns(std::chrono::milliseconds(0));
    session.Feed(KeyInput{Key::kF5});
    EXPECT_EQ(looks, 3) << "a turn";
    EXPECT_TRUE(session.IsReadingAll());
    session.StopReadingAll();
    while (session.IsReadingAgain()) {
        session.ReadChanged();
    }
    EXPECT_EQ(looks, 3);
}

TEST_F(SessionTest, CopyTakesThePathInAFolderAndTheValueInADocument) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "sub");
    for (const char* name : {"sub/a: b", "sub/\xC3\xA9"}) {
        std::ofstream(folder / name).flush();
    }
    std::ofstream(folder / "tree.json") << R"({"list": [{"x": "a: b"}, 7], "n": 1, "at: last": 5})";
    std::ofstream(folder / "tree") << "Fruit\n  red apple\nNote: milk\n";
    const std::string sub = (folder / "sub").string();
    const std::tuple<const char*, const char*, std::string> cases[] = {{".", "sub", sub},
        {".", "a: b", sub + "/a: b"}, {".", "\xC3\xA9", sub + "/\xC3\xA9"},
        {"tree.json", "list", "list"}, {"tree.json", "0", "list/0"},
        {"tree.json", "x: \"a: b\"", "\"a: b\""}, {"tree.json", "1: 7", "7"},
        {"tree.json", "at: last: 5", "5"}, {"tree", "Note: milk", "Note: milk"},
        {"tree", "Fruit", "Fruit"}, {"tree", "red apple", "red apple"}};
    for (const auto& [shown, selected, copied] : cases) {
        m_Tree->Clear(); // binding keeps what is selected
        BindCollection(OpenSource((folder / shown).string()));
        OpenLevels(m_Root.Get(), 3);
        std::ostringstream record;
        Session session(m_Tree.Get(), kFourRows, record);
        session.Feed(KeyInput{Key::kCopy});
        EXPECT_EQ(session.TakeCopied(), std::nullopt) << "nothing is selected";
        session.Feed(TypedInput{std::string("/") + selected});
        session.Feed(KeyInput{Key::kCopy});
        EXPECT_EQ(session.TakeCopied(), copied) << shown;
        EXPECT_NE(session.Searching(), nullptr) << "goes on";
    }
}

TEST_F(SessionTest, KeyAndPictureReadOnlyWhatIsOnTheScreen) {
    using enum Key;
    constexpr int kRows = 10'000;
    const auto rows = CountingRows::Make();
    for (int i = 0; i < kRows; ++i) {
        rows->Append(std::to_string(i), Outline("leaf").Get());
    }
    BindCollection(SmartPtr<ISuperCollection>(rows.Get()));
    std::ostream silence(nullptr);
    Session session(m_Tree.Get(), kFourRows, silence);
    DrawPicture({m_Tree.Get(), kFourRows});
    session.Feed(PointerInput{POINTERSTATE_PRIMARY, POINTERACTION_PRESS, 0, 60, 5});
    session.Feed(PointerInput{POINTERSTATE_PRIMARY, POINTERACTION_RELEASE, 0, 60, 5});
    DrawPicture({m_Tree.Get(), kFourRows}); // counts anew: the click has opened the row
    for (const Key key : {kDown, kPageDown, kUp, kEnd, kPageUp, kHome}) {
        rows->m_Reads = 0;
        session.Feed(KeyInput{key});
        DrawPicture({m_Tree.Get(), kFourRows});
        EXPECT_LT(rows->m_Reads, kRows / 10) << static_cast<int>(key);
    }
}

TEST_F(SessionTest, PictureIsDrawnAgainOnlyWhenSomethingInItChanged) {
    using enum PanelKey;
    Bind("0\n1\n2\n3\n4\n5\n6\n7\n8\n9");
    std::ostringstream record;
    Session session(m_Tree.Get(), kFourRows, record);
    Panel panel(m_Tree.Get());
    KeptPicture picture;
    const auto isDrawn = [&](Panel* shown = nullptr) {
        return session.Draw(picture, {.m_Size = session.GetSize(), .m_Panel = shown});
    };
    EXPECT_TRUE(isDrawn());
    for (int x = 0; x < 100; ++x) {
        session.Feed(PointerInput{0, POINTERACTION_MOVE, 0, double(x), 30});
        EXPECT_EQ(isDrawn(), x == 0) << "the pointer passes over a row, at " << x;
    }
    session.Feed(PointerInput{POINTERSTATE_WHEEL, POINTERACTION_MOVE, 100, 20, 30});
    EXPECT_TRUE(isDrawn()) << "scrolled";
    EXPECT_FALSE(isDrawn());
    session.Resize({200, 110});
    EXPECT_TRUE(isDrawn()) << "resized";
    EXPECT_TRUE(isDrawn(&panel)) << "opened";
    const std::pair<PanelKey, bool> keys[] = {
        {kUp, false}, {kDown, true}, {kHome, true}, {kHome, false}, {kEnd, true}, {kDown, false}};
    for (const auto& [key, isChange] : keys) {
        panel.Press(key);
        EXPECT_EQ(isDrawn(&panel), isChange) << int(key);
    }
    EXPECT_TRUE(isDrawn()) << "closed";
    EXPECT_FALSE(isDrawn());
}

TEST_F(SessionTest, ReadingFoldersAgainKeepsTheSelectedRowAndTheTopByName) {
    const TemporaryFolder folder;
    const auto change = [&](const std::string& made, const std::string& removed) {
        std::ofstream(folder / made).flush();
        std::filesystem::remove(folder / removed);
    };
    for (const char* name : {"a", "c", "d", "e", "f", "g", "h", "i", "k"}) {
        change(name, "none");
    }
    BindCollection(OpenSource((folder / "").string()));
    std::ostringstream record;
    Session session(m_Tree.Get(), kFourRows, record);
    DrawPicture({m_Tree.Get(), kFourRows});
    session.Feed(TypedInput{"e"});
    m_Tree->Control(PROP_SCROLLPOS, 2);
    const std::tuple<const char*, const char*, int, const char*> steps[] = {
        {"b", "none", 3, "e"}, {"l", "a", 2, "e"}, {"m", "d", 2, "e"}, {"n", "e", 2, ""}};
    for (const auto& [made, removed, top, selected] : steps) {
        change(made, removed);
        EXPECT_EQ((session.Feed(KeyInput{Key::kF5}), Value(PROP_SCROLLPOS)), top) << made;
        EXPECT_EQ(SelectedLabel(), selected) << made;
        EXPECT_EQ(session.Marked().m_Focused.has_value(), *selected != '\0') << made;
    }
    EXPECT_EQ(Rows(), "b c f g h i k l m n");
    record.str("");
    session.Feed(KeyInput{Key::kF5});
    EXPECT_EQ(record.str(), "key f5 -> 1\n");
}
