#pragma once

#include "tests/TemporaryDirectory.h"

#include <string>

namespace kavendra {

/// A desktop for tests (see make-test-desktop.sh) whose applications record their command lines. GIO reads
/// its environment once, so create one before the first call of GIO and keep it as long as the process.
class TestDesktop : public TemporaryDirectory {
public:
    /// Creates the desktop and changes the environment of this process to use it.
    TestDesktop();

    /// Returns and removes the record of the started applications; waits for the first line as eventually()
    /// does.
    std::string takeRecord() const;
};

} // namespace kavendra
