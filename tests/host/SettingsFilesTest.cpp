#include "app/SettingsFiles.h"
#include "host/DocumentError.h"
#include "tests/host/HostTest.h"
#include "tests/support/TreeTest.h"

namespace {

class SettingsFilesTest : public TreeTest {};

} // namespace

TEST_F(SettingsFilesTest, ControlIsSavedAndLoadedInBothForms) {
    const TemporaryFolder folder;
    const std::string document = folder / "document";
    const std::string xml = folder / "xml";
    EXPECT_THROW(LoadDocument(m_Tree.Get(), document), DocumentMissing);
    EXPECT_THROW(LoadXml(m_Tree.Get(), xml), DocumentMissing);
    SaveDocument(m_Tree.Get(), document);
    SaveXml(m_Tree.Get(), xml);
    LoadDocument(m_Tree.Get(), document);
    LoadXml(m_Tree.Get(), xml);
    EXPECT_EQ(Value(105), 1) << "as it was";
    EXPECT_THROW(SaveXml(Outline("A").Get(), xml), DocumentError) << "no control";
}
