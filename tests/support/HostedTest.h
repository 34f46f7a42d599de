#pragma once

#include "framework/Support.h"
#include "host/Host.h"
#include "host/components/LiveObjects.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>

/// Runs a host, whose modules stand in the current directory; every object has to be given back,
/// those of a test's fixture included.
class HostedTest : public testing::Test {
protected:
    HostedTest() {
        // The descriptions behind strings and variants stay until the program ends.
        Adopt(CREFString::CreateString()).Reset();
        Adopt(CREFString::CreateVariant()).Reset();
        m_LiveBefore = LiveObjects();
        m_Host.emplace(".");
    }
    ~HostedTest() override {
        m_Host.reset();
        EXPECT_EQ(LiveObjects(), m_LiveBefore) << "host objects leaked";
    }

    std::optional<Host> m_Host;

private:
    std::map<std::string, int32_t> m_LiveBefore;
};
