#pragma once

#include "tests/TemporaryDirectory.h"

#include <string>
#include <string_view>
#include <vector>

namespace kavendra {

/// A desktop of the test's own (see make-test-desktop.sh): its applications record what they are asked.
/// GIO reads its surroundings once, so one of these must be made before the first call of GIO and live as
/// long as the process.
class TestDesktop {
public:
    /// Makes the desktop and points this process's environment at it.
    TestDesktop();

    /// Returns the lines that applications have recorded since the last forgetRecords, waiting up to five
    /// seconds for the first.
    std::string waitForRecord() const;
    /// Returns what has been recorded by now.
    std::string record() const { return directory.read("record"); }
    void forgetRecords() const;

    /// What the application that recorded last was started with.
    std::vector<std::string> environmentOfApplication() const;
    /// The session that it was in.
    int sessionOfApplication() const;
    bool applicationHandlesSignalsByDefault() const;

    std::string path(std::string_view name) const { return directory.path(name); }
    std::string applicationPath(std::string_view id) const;

private:
    TemporaryDirectory directory;
};

} // namespace kavendra
