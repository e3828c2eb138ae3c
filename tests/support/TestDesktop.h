#pragma once

#include "tests/TemporaryDirectory.h"

#include <string>
#include <string_view>
#include <vector>

namespace kavendra {

/// A desktop for tests (see make-test-desktop.sh) whose applications record their command lines. GIO reads
/// its environment once, so create one before the first call of GIO and keep it as long as the process.
class TestDesktop {
public:
    /// Creates the desktop and changes the environment of this process to use it.
    TestDesktop();

    /// Returns the record of all applications since the last forgetRecords; waits for the first line as
    /// eventually() does.
    std::string waitForRecord() const;
    /// Returns the record without waiting.
    std::string record() const { return m_directory.read("record"); }
    void forgetRecords() const;

    /// The environment of the last application.
    std::vector<std::string> environmentOfApplication() const;
    int sessionOfApplication() const;
    bool applicationHandlesSignalsByDefault() const;

    std::string path(std::string_view name) const { return m_directory.path(name); }
    std::string applicationPath(std::string_view id) const;

private:
    TemporaryDirectory m_directory;
};

} // namespace kavendra
