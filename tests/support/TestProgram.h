#pragma once

namespace kavendra {

/// Prepares a program of tests so that it passes when run directly and in any order: a fixed locale, Qt
/// without a display, no session bus of the user, and each test's changes of the environment undone behind
/// it. To be called before anything else; takes the options of GoogleTest.
void prepareTests(int& argumentCount, char* arguments[]);

} // namespace kavendra
