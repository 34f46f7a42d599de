#include "framework/support/FileNames.h"

#include "framework/interfaces/FileInterfaces.h"
#include "framework/runtime/Components.h"
#include "framework/runtime/Guarded.h"
#include "framework/support/HostStrings.h"

#include <algorithm>
#include <cwctype>
#include <string>
#include <string_view>

namespace {

constexpr std::wstring_view kUp = L"..\\";

bool IsSeparator(wchar_t character) {
    return character == L'\\' || character == L'/';
}

wchar_t Lower(wchar_t character) {
    return static_cast<wchar_t>(std::towlower(static_cast<wint_t>(character)));
}

/// One reference to `string` itself, for a name that is handed back unchanged.
IString* Share(IString* string) {
    return SmartPtr(string).Detach();
}

IString* CreateText(const std::wstring& text) {
    return ISCreate(tagREFString{static_cast<int32_t>(text.size()), text.data()});
}

int32_t ReadWorkspacePath(const wchar_t* key, IString** path) {
    wchar_t buffer[REGISTRY_TEXT_CAPACITY] = {};
    int32_t status = E_FAIL;
    if (const auto registry = CreateHostObject<IRegistryEx>("Registry")) {
        status = registry->ReadString(L"Workspace", key, buffer);
    }
    const auto* end = std::find(buffer, std::end(buffer), L'\0');
    *path = ISCreate(tagREFString{static_cast<int32_t>(end - buffer), buffer});
    return status;
}

/// How far from its start `path` agrees with `base`, and so may share folders with it: the last
/// position to look at for a separator, or 0.
size_t SharedLength(std::wstring_view base, std::wstring_view path) {
    const size_t length = std::min(base.size(), path.size());
    size_t same = 0;
    while (same < length && Lower(base[same]) == Lower(path[same])) {
        ++same;
    }
    return same == length ? length : std::max<size_t>(same, 1) - 1;
}

/// The installation folder without its last `levels` folders; all of it when it has too few.
std::wstring_view GoUp(std::wstring_view folder, size_t levels) {
    constexpr size_t kShortestPrefix = 3;
    size_t found = 0;
    for (size_t i = folder.size(); levels > 0 && i-- > kShortestPrefix;) {
        if (folder[i] == L'/' && ++found == levels) {
            return folder.substr(0, i);
        }
    }
    return folder;
}

IString* CreateRelative(IString* base, IString* path) {
    const CREFString baseReference(base);
    const CREFString pathReference(path);
    const std::wstring_view baseText = ViewOf(baseReference);
    const std::wstring_view pathText = ViewOf(pathReference);

    const size_t shared = SharedLength(baseText, pathText);
    size_t separators = 0;
    size_t last = 0;
    for (size_t i = 1; i <= shared && i < pathText.size(); ++i) {
        if (IsSeparator(pathText[i])) {
            ++separators;
            last = i;
        }
    }
    if (separators < 2) {
        return Share(path);
    }
    auto ups = static_cast<size_t>(last < baseText.size() ? 1 : 0);
    for (size_t i = last + 1; i < baseText.size(); ++i) {
        ups += IsSeparator(baseText[i]) ? 1 : 0;
    }
    std::wstring relative;
    while (ups-- > 0) {
        relative += kUp;
    }
    return CreateText(relative.append(pathText.substr(last + 1)));
}

IString* CreateAbsolute(IString* path) {
    SmartPtr<IString> install;
    FILENAMEGetInstallPath(install.Receive());
    const CREFString installReference(install.Get());
    const CREFString reference(path);
    const std::wstring_view text = ViewOf(reference);

    size_t ups = 0;
    while (text.substr(std::min(kUp.size() * ups, text.size()), kUp.size()) == kUp) {
        ++ups;
    }
    const bool empty = text.empty();
    const bool absolute = !empty && (text.front() == L'/' || text.find(L':') != text.npos);
    const bool plain = ups == 0 && (text.size() < kUp.size() || text[1] == L'/');
    if (!empty) {
        const size_t kept = absolute || plain ? 0 : kUp.size() * ups;
        auto* characters = const_cast<wchar_t*>(text.data()); // GetString hands them out writable
        std::replace(characters + kept, characters + text.size(), L'\\', L'/');
    }
    if (absolute || plain) {
        return Share(path);
    }
    std::wstring name(GoUp(ViewOf(installReference), ups));
    name.append(L"/").append(text.substr(kUp.size() * ups));
    return CreateText(name);
}

/// Hands out the name that `create` makes; null when memory runs out.
template <class Create>
int32_t HandOut(IString** result, Create&& create) {
    *result = nullptr;
    return Guarded([&] {
        *result = create();
        return S_OK;
    });
}

} // namespace

int32_t FILENAMEGetInstallPath(IString** path) {
    return ReadWorkspacePath(L"InstallPath", path);
}

int32_t FILENAMEGetCommonPath(IString** path) {
    return ReadWorkspacePath(L"CommonPath", path);
}

int32_t FILENAMECreateRelative(IString* base, IString* path, IString** result) {
    return HandOut(result, [&] { return CreateRelative(base, path); });
}

int32_t FILENAMECreateAbsolute(IString* path, IString** result) {
    return HandOut(result, [&] { return CreateAbsolute(path); });
}
