#include "tests/support/TestProgram.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char* argv[]) {
    kavendra::prepareTests(argc, argv);
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
