#pragma once

#include "tests/support/TestBus.h"

#include <memory>
#include <string>
#include <vector>

namespace kavendra {

/// A file manager on that bus (org.freedesktop.FileManager1) that keeps what it is asked.
class TestFileManager {
public:
    enum class Manner { obliging, refusing, hanging };

    TestFileManager(const TestBus& bus, Manner manner);
    ~TestFileManager();
    TestFileManager(const TestFileManager&) = delete;
    TestFileManager& operator=(const TestFileManager&) = delete;

    /// Returns the URIs that it was asked to show, of every call.
    std::vector<std::string> shownFolders() const;

private:
    struct Service;
    std::unique_ptr<Service> service;
};

} // namespace kavendra
