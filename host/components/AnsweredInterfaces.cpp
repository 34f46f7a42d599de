#include "host/components/AnsweredInterfaces.h"

#include "framework/Interfaces.h"
#include "framework/Runtime.h"

std::map<std::string, IID> InterfacesOf(IUnknown* object) {
    std::map<std::string, IID> found;
    const auto test = [&](const char* name, const IID& iid) {
        if (Adopt(static_cast<IUnknown*>(QueryObject(object, iid)))) {
            found.emplace(name, iid);
        }
    };
    test("IUnknown", IID_IUnknown);
#define TEST_INTERFACE(name) test(#name, IID_##name);
    FRAMEWORK_INTERFACE_NAMES(TEST_INTERFACE)
#undef TEST_INTERFACE
    return found;
}
