#include "app/settings/SettingsFiles.h"

#include "framework/interfaces/PropertyInterfaces.h"
#include "host/settings/Document.h"
#include "host/settings/XmlFile.h"

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
}

void SaveXml(IUnknown* control, const std::string& file) {
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
