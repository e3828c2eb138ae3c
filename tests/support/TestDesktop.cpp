#include "tests/support/TestDesktop.h"

#include "tests/support/ProcessTable.h"

#include <sstream>
#include <stdexcept>

namespace kavendra {

TestDesktop::TestDesktop() {
    const std::string command = "'" MAKE_TEST_DESKTOP "' '" + m_directory.path() + "'";
    if (std::system(command.c_str()) != 0)
        throw std::runtime_error("cannot create the test's desktop: " + command);
    std::istringstream variables(m_directory.read("environment"));
    for (std::string variable; std::getline(variables, variable);) {
        const std::size_t nameEnd = variable.find('=');
        setenv(variable.substr(0, nameEnd).c_str(), variable.c_str() + nameEnd + 1, 1);
    }
}

std::string TestDesktop::waitForRecord() const {
    eventually([this] { return record().ends_with('\n'); });
    return record();
}

void TestDesktop::forgetRecords() const {
    std::filesystem::remove(m_directory.path("record"));
}

std::vector<std::string> TestDesktop::environmentOfApplication() const {
    std::istringstream text(m_directory.read("record.environ"));
    std::vector<std::string> entries;
    for (std::string entry; std::getline(text, entry, '\0');)
        entries.push_back(entry);
    return entries;
}

int TestDesktop::sessionOfApplication() const {
    return sessionOfProcess(m_directory.read("record.stat"));
}

bool TestDesktop::applicationHandlesSignalsByDefault() const {
    return handlesSignalsByDefault(m_directory.read("record.status"));
}

std::string TestDesktop::applicationPath(std::string_view id) const {
    return m_directory.path("data/applications/") + std::string(id);
}

} // namespace kavendra
