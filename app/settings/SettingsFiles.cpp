#include "app/settings/SettingsFiles.h"

#include "app/settings/SettingsPage.h"
#include "framework/interfaces/PropertyInterfaces.h"
#include "host/settings/Document.h"
#include "host/settings/XmlFile.h"
#include "host/text/Text.h"

#include <iostream>

namespace {

template <class Interface>
SmartPtr<Interface> Obtain(IUnknown* control, const char* action, const std::string& file) {
    auto found = Query<Interface>(control);
    if (!found) {
        throw DocumentError(action, file, "the control keeps no settings");
    }
    return found;
}

void Check(int32_t status, const char* action, const std::string& file) {
    if (status < 0) {
        throw DocumentError(action, file, "the control refuses");
    }
}

/// The control's table holds more than the interface that it is asked for.
SmartPtr<IUIPropInterrogatePersist> ObtainSettings(
    IUnknown* control, const char* action, const std::string& file) {
    auto properties = Obtain<IUIPropInterrogateEx>(control, action, file);
    return Adopt(static_cast<IUIPropInterrogatePersist*>(properties.Detach()));
}

std::string PlaceOf(const XmlFile::Item& item) {
    return "line " + std::to_string(item.m_Line);
}

/// Values are loaded as the control takes them; what the settings page would not take is told.
void WarnOfValues(const SettingsPage& page, const XmlFile& text, const std::string& file) {
    for (const XmlFile::Item& item : text.Items()) {
        const std::string name = ToPrintable(Refer(item.m_Name));
        const auto index = name.empty() ? std::nullopt : page.Find(name);
        if (index && !page.Takes(*index, Refer(item.m_Content))) {
            std::cerr << "treehost: " << ToPrintable(Refer(ToWide(file))) << ", " << PlaceOf(item)
                      << ": " << name << " should be " << page.HintAt(*index) << ", not \""
                      << ToPrintable(Refer(item.m_Content)) << "\"\n";
        }
    }
}

/// What a save would lose keeps a file from being saved over.
void CheckNothingIsLost(const SettingsPage& page, const std::string& file) {
    try {
        const auto text = XmlFile::Load(file);
        for (const XmlFile::Item& item : text->Items()) {
            const std::string name = ToPrintable(Refer(item.m_Name));
            if (name.empty() || !page.Find(name)) {
                throw DocumentError("save", file,
                    PlaceOf(item) + " holds " + (name.empty() ? "a comment" : "<" + name + ">") +
                        ", which would be lost");
            }
        }
    } catch (const DocumentMissing&) { // nothing is there
    }
}

} // namespace

void LoadDocument(IUnknown* control, const std::string& file) {
    const Document document = Document::Load(file);
    const auto persist = Obtain<IDataPersist>(control, "load", file);
    Check(persist->Load(document.Root().Get(), 0), "load", file);
    document.Check();
}

void SaveDocument(IUnknown* control, const std::string& file) {
    Document document = Document::Save(file);
    const auto persist = Obtain<IDataPersist>(control, "save", file);
    Check(persist->Save(document.Root().Get(), 0), "save", file);
    document.Commit();
}

void CheckDocument(const std::string& file) {
    const Document undone = Document::Save(file);
}

void LoadXml(IUnknown* control, const std::string& file) {
    const auto stream = XmlFile::Load(file);
    const auto settings = ObtainSettings(control, "load", file);
    Check(settings->UIPropInterrogate_LoadXML(nullptr, stream.Get(), 0), "load", file);
    WarnOfValues(SettingsPage(control), *stream.Get(), file);
}

void SaveXml(IUnknown* control, const std::string& file) {
    CheckNothingIsLost(SettingsPage(control), file);
    const auto stream = XmlFile::Make();
    const auto settings = ObtainSettings(control, "save", file);
    Check(settings->UIPropInterrogate_SaveXML(nullptr, stream.Get(), 0), "save", file);
    stream->Commit(file);
}

bool LoadIfThere(void (*load)(IUnknown* control, const std::string& file), IUnknown* control,
    const std::string& file) {
    try {
        load(control, file);
        return true;
    } catch (const DocumentMissing&) {
        return false;
    }
}
