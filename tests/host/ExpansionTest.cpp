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

TEST_F(ExpansionTest, CollectionInTwoPlacesIsOpenedAsFarAsTheHigherOneIs) {
    const auto root = SuperCollection::Make();
    const auto above = SuperCollection::Make();
    const auto shared = SuperCollection::Make();
    const auto below = SuperCollection::Make();
    root->Append("above", above->Identity());
    root->Append("shared", shared->Identity());
    above->Append("shared", shared->Identity());
    shared->Append("below", below->Identity());
    below->Append("leaf", Listener::Make()->Identity());
    EXPECT_EQ(OpenedRows(SmartPtr<ISuperCollection>(root.Get()), 2),
        "above1- shared2- below2- leaf3 shared1- below2- leaf3");
}
