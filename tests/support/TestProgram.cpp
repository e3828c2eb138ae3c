#include "tests/support/TestProgram.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <map>
#include <string>

namespace kavendra {

namespace {

using Variables = std::map<std::string, std::string>;

Variables environmentVariables() {
    Variables variables;
    for (char** entry = environ; entry && *entry; ++entry) {
        const std::string text = *entry;
        const std::size_t nameEnd = text.find('=');
        variables[text.substr(0, nameEnd)] = text.substr(nameEnd + 1);
    }
    return variables;
}

class EnvironmentRestorer : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo& /*test*/) override { m_before = environmentVariables(); }

    void OnTestEnd(const testing::TestInfo& /*test*/) override {
        for (const auto& [name, value] : environmentVariables())
            if (!m_before.contains(name))
                unsetenv(name.c_str());
        for (const auto& [name, value] : m_before)
            setenv(name.c_str(), value.c_str(), 1);
    }

    Variables m_before;
};

} // namespace

void prepareTests(int& argumentCount, char* arguments[]) {
    setenv("LC_ALL", "C.UTF-8", 1);
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
    testing::InitGoogleTest(&argumentCount, arguments);
    testing::UnitTest::GetInstance()->listeners().Append(new EnvironmentRestorer); // takes ownership
}

} // namespace kavendra
