#pragma once

namespace kavendra {

/// Prepares a test program to pass when run directly and in any order: sets a fixed locale, Qt's offscreen
/// platform and no session bus, and restores the environment after each test. Call it first in main; it reads
/// GoogleTest's options.
void prepareTests(int& argumentCount, char* arguments[]);

} // namespace kavendra
