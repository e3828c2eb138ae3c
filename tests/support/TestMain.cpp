#include "tests/support/TestProgram.h"

#include <gtest/gtest.h>

int main(int argc, char* argv[]) {
    kavendra::prepareTests(argc, argv);
    return RUN_ALL_TESTS();
}
