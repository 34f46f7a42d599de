#include "app/commands/Commands.h"
#include "app/commands/ReadWithBar.h"
#include "app/settings/Palette.h"
#include "app/settings/Panel.h"
#include "app/settings/SettingsFiles.h"
#include "app/view/Picture.h"
#include "framework/interfaces/TreeProperties.h"
#include "host/data/Expansion.h"
#include "host/text/Text.h"

#include <filesystem>
#include <iostream>

namespace {

void OpenRows(const TreeView& view, const std::vector<int32_t>& rows) {
    for (const int32_t row : rows) {
        switch (OpenRow(view.Source(), row)) {
        case OpenResult::kDone:
            break;
        case OpenResult::kNoSuchRow:
            throw UsageError("--open: there is no row " + std::to_string(row));
        case OpenResult::kNothingBelow:
            throw UsageError("--open: nothing can be opened in row " + std::to_string(row));
        }
    }
}

} // namespace

void RunShot(const ShotOptions& options) {
    const Size size = ParseSize(options.m_Size, options.m_Scale);
    if (options.m_Out.empty()) {
        throw UsageError("--out: a file name is missing");
    }
    const bool isFile = options.m_Out != "-";
    const std::string file = isFile ? std::filesystem::absolute(options.m_Out).string() : "-";

    const TreeView view = ReadWithBar(options.m_Path, options.m_Depth, options.m_Kind);
    if (!options.m_Document.empty()) {
        LoadDocument(view.Control(), options.m_Document);
    }
    ApplyTheme(view.Control(), options.m_Theme);
    OpenRows(view, options.m_Open);
    view.Control()->Control(PROP_SCROLLPOS, options.m_Scroll);

    std::optional<Panel> panel;
    if (options.m_Page) {
        panel.emplace(view.Control());
    }
    const auto picture = DrawPicture({.m_Tree = view.Control(),
        .m_Size = size,
        .m_Panel = panel ? &*panel : nullptr,
        .m_Highlights = {.m_HasGuides = options.m_HasGuides}});
    WritePicture(picture.get(), file, isFile ? options.m_Out : "standard output");
    if (isFile) {
        std::cout << ToPrintable(Refer(ToWide(options.m_Out))) << '\n';
    }
    view.CheckAllRead();
}
