#include "framework/settings/ParameterValues.h"

#include "framework/support/FileNames.h"

int32_t InquireLong(IUIPropInterrogateEx& object, int32_t id) {
    int32_t value = 0;
    object.Inquire(id, &value);
    return value;
}

double InquireReal(IUIPropInterrogateEx& object, int32_t id) {
    return std::bit_cast<float>(InquireLong(object, id));
}

SmartPtr<IString> InquireText(IUIPropInterrogateEx& object, const PROPParameter& parameter) {
    SmartPtr<IUnknown> value;
    object.InquireEx(parameter.m_ID, value.Receive());
    auto text = Query<IString>(value.Get());
    if (parameter.IsFileName()) {
        SmartPtr<IString> folder;
        SmartPtr<IString> relative;
        FILENAMEGetInstallPath(folder.Receive());
        FILENAMECreateRelative(folder.Get(), text.Get(), relative.Receive());
        text = std::move(relative);
    }
    return text;
}

void ControlReal(IUIPropInterrogateEx& object, int32_t id, double value) {
    object.Control(id, std::bit_cast<int32_t>(static_cast<float>(value)));
}

void ControlText(
    IUIPropInterrogateEx& object, int32_t id, SmartPtr<IString> text, bool isFileName) {
    if (isFileName) {
        SmartPtr<IString> absolute;
        FILENAMECreateAbsolute(text.Get(), absolute.Receive());
        text = std::move(absolute);
    }
    if (text) {
        object.ControlEx(id, text.Get());
    }
}
