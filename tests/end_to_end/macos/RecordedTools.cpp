#include "platform/MacTools.h"

#include <cstdlib>

namespace kavendra {

/// The recording tools of the test desktop (make-test-desktop.sh).
MacTools macTools() {
    const char* root = std::getenv("KAVENDRA_TEST_DESKTOP");
    return MacTools::below(root ? root : "/nonexistent");
}

} // namespace kavendra
