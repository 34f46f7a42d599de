#pragma once

#include "host/data/SuperCollection.h"
#include "tests/framework/FrameworkTest.h"

struct Settings final
    : Component<Settings, IUIPropInterrogateImpl<Settings, IUIPropInterrogateEx, 10l>> {
    using IUIPropInterrogateImpl::AddParameter;
    using ParameterTable::Add;

    Settings() { ++s_Living; }
    ~Settings() { --s_Living; }

    inline static int s_Living = 0;
};

/// Parameters of every type; the number is the type, or the type and ten times what follows.
struct SettingsTest : HostedTest {
    SettingsTest() {
        const std::tuple<int32_t, uint32_t, void*> parameters[] = {{7, 7, &m_Object},
            {1, 1, &m_Byte}, {2, 2, &m_Short}, {13, 0x23, &m_Color}, {3, 3, &m_Long},
            {23, 3 | PROPFLAG_TRANSIENT, &m_Transient}, {4, 4, &m_Float}, {5, 5, &m_Double},
            {6, 6, &m_String}, {16, 6 | PROPFLAG_FILENAME, &m_File}, {8, 8, &m_Long}};
        for (const auto& [id, flags, field] : parameters) {
            m_Settings->AddParameter(id, flags, field, -100, id);
        }
    }

    uint8_t m_Byte = 0xFE;
    int16_t m_Short = -2;
    int32_t m_Long = 15, m_Color = 0x123456, m_Transient = 1;
    float m_Float = 2.5F;
    double m_Double = -0.1;
    SmartPtr<IString> m_String, m_File;
    SmartPtr<IUnknown> m_Object;
    SmartPtr<Settings> m_Settings = Adopt(new Settings);
};
