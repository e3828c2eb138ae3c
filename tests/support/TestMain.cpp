#include "tests/support/TestProgram.h"

#include <gtest/gtest.h>

#ifdef __SANITIZE_ADDRESS__
// Tests measure memory; the sanitizer must not keep much freed memory.
extern "C" const char* __asan_default_options() {
    return "quarantine_size_mb=1";
}
#endif

int main(int argc, char* argv[]) {
    kavendra::prepareTests(argc, argv);
    return RUN_ALL_TESTS();
}
