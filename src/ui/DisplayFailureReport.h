#pragma once

namespace kavendra {

/// Qt aborts when it can reach no display. While an object of this class exists, the process then prints one
/// line on standard error and exits with status 1 instead. Other messages of Qt are printed on destruction.
/// There may be one object at a time.
class DisplayFailureReport {
public:
    DisplayFailureReport();
    ~DisplayFailureReport();
    DisplayFailureReport(const DisplayFailureReport&) = delete;
    DisplayFailureReport& operator=(const DisplayFailureReport&) = delete;
};

} // namespace kavendra
