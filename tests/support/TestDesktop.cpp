#include "tests/support/TestDesktop.h"

#include "tests/support/ProcessTable.h"

#include <sstream>
#include <stdexcept>

namespace kavendra {

TestDesktop::TestDesktop() {
    const std::string command = "'" MAKE_TEST_DESKTOP "' '" + path() + "'";
    if (std::system(command.c_str()) != 0)
        throw std::runtime_error("cannot create the test's desktop: " + command);
    std::istringstream variables(read("environment"));
    for (std::string variable; std::getline(variables, variable);) {
        const std::size_t nameEnd = variable.find('=');
        setenv(variable.substr(0, nameEnd).c_str(), variable.c_str() + nameEnd + 1, 1);
    }
}

std::string TestDesktop::takeRecord() const {
    eventually([this] { return read("record").ends_with('\n'); });
    const std::string record = read("record");
    std::filesystem::remove(path("record"));
    return record;
}

} // namespace kavendra
