#pragma once

#include "framework/Unknown.h"

#include <string>
#include <vector>

/// One numbered parameter of a control.
struct ParameterInfo {
    int32_t m_Id;
    int32_t m_Flags;
    std::string m_Type;
    int32_t m_Min;
    int32_t m_Max;
    std::string m_Value; ///< as text; objects by whether there is one
    bool m_IsNumber;     ///< the text is a decimal number
};

/// The framework's interfaces that an object answers.
std::vector<std::string> InterfacesOf(IUnknown* object);

/// The parameters with the numbers 0 to 255.
std::vector<ParameterInfo> ParametersOf(IUnknown* object);
