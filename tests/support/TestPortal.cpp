#include "tests/support/TestPortal.h"

namespace kavendra {

namespace {

constexpr TestService::Description description{
    .name = "org.freedesktop.portal.Desktop", .path = "/org/freedesktop/portal/desktop", .interface = R"(
<node>
  <interface name='org.freedesktop.portal.Settings'>
    <method name='Read'>
      <arg type='s' name='namespace' direction='in'/>
      <arg type='s' name='key' direction='in'/>
      <arg type='v' name='value' direction='out'/>
    </method>
    <signal name='SettingChanged'>
      <arg type='s' name='namespace'/>
      <arg type='s' name='key'/>
      <arg type='v' name='value'/>
    </signal>
  </interface>
</node>)"};

} // namespace

TestPortal::TestPortal(const TestBus& bus, std::uint32_t colorScheme, Manner manner)
    : manner(manner), scheme(colorScheme),
      service(bus, description, [this](const std::string&, GVariant*, GDBusMethodInvocation* invocation) {
          answer(invocation);
      }) {}

void TestPortal::answer(GDBusMethodInvocation* invocation) {
    ++reads;
    switch (manner) {
    case Manner::obliging:
        return g_dbus_method_invocation_return_value(
            invocation, g_variant_new("(v)", g_variant_new_variant(g_variant_new_uint32(scheme))));
    case Manner::hanging:
        return g_object_unref(invocation);
    case Manner::confused:
        return g_dbus_method_invocation_return_value(invocation,
                                                     g_variant_new("(v)", g_variant_new_string("dark")));
    case Manner::knowsNone:
        return g_dbus_method_invocation_return_dbus_error(invocation, "org.freedesktop.portal.Error.NotFound",
                                                          "Requested setting not found");
    }
}

void TestPortal::setColorScheme(std::uint32_t colorScheme) {
    scheme = colorScheme;
    service.emit("SettingChanged", g_variant_new("(ssv)", "org.freedesktop.appearance", "color-scheme",
                                                 g_variant_new_uint32(colorScheme)));
}

void TestPortal::changeSomethingElse() {
    service.emit("SettingChanged",
                 g_variant_new("(ssv)", "org.freedesktop.appearance", "contrast", g_variant_new_uint32(1)));
}

} // namespace kavendra
