#include "app/input/Input.h"

#include "host/text/Numbers.h"
#include "host/text/Text.h"

namespace {

std::string PointerActionText(int32_t action) {
    switch (action) {
    case POINTERACTION_PRESS:
        return "press";
    case POINTERACTION_RELEASE:
        return "release";
    default:
        return "move";
    }
}

std::string Text(const PointerInput& input) {
    const std::string place = " " + NumberText(input.m_X) + " " + NumberText(input.m_Y);
    if ((input.m_State & POINTERSTATE_WHEEL) != 0) {
        const bool isFast = (input.m_State & POINTERSTATE_FAST) != 0;
        return "wheel" + place + " " + std::to_string(input.m_Keys) + (isFast ? " fast" : "");
    }
    std::string text = PointerActionText(input.m_Action) + place;
    const int32_t usual = input.m_Action == POINTERACTION_MOVE ? 0 : POINTERSTATE_PRIMARY;
    if (input.m_State != usual || input.m_Keys != 0) {
        text += " " + (input.m_State == 0 ? "none" : WordsText(input.m_State, kButtonWords));
    }
    return input.m_Keys != 0 ? text + " " + WordsText(input.m_Keys, kKeysWords) : text;
}

std::string Text(const TouchInput& input) {
    const std::string phase = input.m_Phase == TOUCHPHASE_START    ? "start"
                              : input.m_Phase == TOUCHPHASE_UPDATE ? "update"
                                                                   : NumberText(input.m_Phase);
    return "touch " + phase + " " + NumberText(input.m_PanY);
}

std::string Text(const KeyInput& input) {
    return "key " + std::string(kKeyWords[static_cast<size_t>(input.m_Key)].m_Name);
}

std::string Text(const TypedInput& input) {
    return "type " + ToPrintable(Refer(ToWide(input.m_Text)));
}

} // namespace

std::string ToText(const Input& input) {
    return std::visit([](const auto& each) { return Text(each); }, input);
}
