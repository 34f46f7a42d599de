#include "tests/host/SourceTest.h"

// Indented outlines as trees.

using OutlineSourceTest = SourceTest;

TEST_F(OutlineSourceTest, OutlineDeeperLinesAreChildrenWhateverTheyConsistOf) {
    const std::tuple<const char*, int32_t, const char*> outlines[] = {
        {"A\n  a1\n      deep\n  a2\n\n \t \nB\n", 9, "A1- a12- deep3 a22 B1"},
        {"\ttab\n        eight\n    \t same\n", 9, "tab1 eight1- same2"},
        {"    deep first\n  less\nleast\n  below", 9, "deep first1 less1 least1- below2"},
        {"top\n        far\n    between\n        below\n", 9, "top1- far2 between2- below3"},
        {"A\r\n  b\xff\r\n\r\n", 9, "A1- b\uFFFD2"}, {"\n \n\t", 9, ""},
        {"A\n  b\n    c\n      d\nE\n", 2, "A1- b2- c3 E1"}};
    for (const auto& [text, levels, rows] : outlines) {
        EXPECT_EQ(OpenedRows(Outline(text), levels), rows);
    }
}
