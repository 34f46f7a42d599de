#include "tests/host/SourceTest.h"

// Walks over trees.

using ExpansionTest = SourceTest;

TEST_F(ExpansionTest, CollectionInItselfIsShownOnceAndEndsEveryWalk) {
    const auto root = SuperCollection::Make();
    const auto inner = SuperCollection::Make();
    root->Append("inner", inner->Identity());
    root->Append("self", root->Identity());
    inner->Append("back", root->Identity());
    EXPECT_EQ(OpenedRows(SmartPtr<ISuperCollection>(root.Get()), 1000), "inner1- back2- self1-");
    root->RemoveAll();
}
