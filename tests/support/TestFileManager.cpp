#include "tests/support/TestFileManager.h"

#include <mutex>

namespace kavendra {

namespace {

constexpr TestService::Description description{
    .name = "org.freedesktop.FileManager1", .path = "/org/freedesktop/FileManager1", .interface = R"(
<node>
  <interface name='org.freedesktop.FileManager1'>
    <method name='ShowFolders'>
      <arg type='as' name='URIs' direction='in'/>
      <arg type='s' name='StartupId' direction='in'/>
    </method>
  </interface>
</node>)"};

} // namespace

struct TestFileManager::Service {
    Service(const TestBus& bus, Manner manner)
        : manner(manner),
          service(bus, description,
                  [this](const std::string&, GVariant* parameters, GDBusMethodInvocation* invocation) {
                      answer(parameters, invocation);
                  }) {}

    void answer(GVariant* parameters, GDBusMethodInvocation* invocation);

    Manner manner;
    std::mutex mutex;
    std::vector<std::string> uris;
    TestService service;
};

void TestFileManager::Service::answer(GVariant* parameters, GDBusMethodInvocation* invocation) {
    const char** called = nullptr;
    g_variant_get(parameters, "(^a&s&s)", &called, nullptr);
    {
        const std::lock_guard lock(mutex);
        for (const char** uri = called; *uri; ++uri)
            uris.emplace_back(*uri);
    }
    g_free(called);
    switch (manner) {
    case Manner::obliging:
        return g_dbus_method_invocation_return_value(invocation, nullptr);
    case Manner::refusing:
        return g_dbus_method_invocation_return_dbus_error(invocation, "org.example.Refused", "Not today");
    case Manner::hanging:
        return g_object_unref(invocation);
    }
}

TestFileManager::TestFileManager(const TestBus& bus, Manner manner)
    : service(std::make_unique<Service>(bus, manner)) {}

TestFileManager::~TestFileManager() = default;

std::vector<std::string> TestFileManager::shownFolders() const {
    const std::lock_guard lock(service->mutex);
    return service->uris;
}

} // namespace kavendra
