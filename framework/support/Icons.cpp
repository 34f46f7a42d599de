#include "framework/support/Icons.h"

#include "framework/interfaces/FileInterfaces.h"
#include "framework/runtime/Components.h"
#include "framework/support/FileNames.h"
#include "framework/support/HostStrings.h"

namespace {

SmartPtr<ICreatableString> IconPath(tagREFString fileName) {
    SmartPtr<IString> common;
    FILENAMEGetCommonPath(common.Receive());
    auto path = Query<ICreatableString>(common.Get());
    if (path) {
        path->AppendString(CREFString(L"/"));
        path->AppendString(CREFString(L"_icons"));
        path->AppendString(CREFString(L"/"));
        path->AppendString(fileName);
    }
    return path;
}

} // namespace

IRenderableObject* ICONCreate(tagREFString fileName) {
    const auto path = IconPath(fileName);
    if (!path) {
        return nullptr;
    }
    auto icon = CreateHostObject<IRenderableObject>("CIFFileEx");
    const auto archive = Query<IFileArchive>(icon.Get());
    const auto name = Adopt(ISCreate(CREFString(path.Get())));
    if (!archive || !name) {
        return nullptr;
    }
    archive->SetFileName(name.Get());
    return archive->Populate() < 0 ? nullptr : icon.Detach();
}
