// A service on a message bus, played by python-dbusmock.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <gio/gio.h>

#include "linux/handles/Owned.hpp"
#include "tests/support/ChildProcess.hpp"
#include "tests/support/PrivateBus.hpp"

namespace nivlo::test {

/// Runs a mocked service on a private bus, which serves as its session bus and its system bus. Destroying the
/// object kills the service, as a crash would. Construction waits until the service answers calls, and throws
/// std::runtime_error with the mock's output if it does not. For use by one thread.
class MockedService {
 public:
  /// The interface through which tests control a mock.
  static constexpr auto kMock = "org.freedesktop.DBus.Mock";

  /// `name` is the service's name on the bus. `arguments` are those of `python3 -m dbusmock`: a template, or
  /// the name, the path and the interface.
  MockedService(const PrivateBus& bus, std::string name, std::vector<std::string> arguments)
      : name_(std::move(name)),
        process_(command(std::move(arguments)),
                 {{"DBUS_SYSTEM_BUS_ADDRESS", addressOf(bus)}, {"DBUS_SESSION_BUS_ADDRESS", addressOf(bus)}}),
        bus_(g_dbus_connection_new_for_address_sync(
            addressOf(bus).c_str(),
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
            nullptr, nullptr, nullptr)) {
    process_.expectReady(
        [&] { return call("/", "org.freedesktop.DBus.Introspectable", "Introspect", nullptr) != nullptr; });
  }

  /// Calls a method and waits for the reply. Returns null if that is an error or takes longer than 5 s.
  /// `arguments` is a tuple in GVariant's text format, or null for none.
  Owned<GVariant, g_variant_unref> call(const std::string& path, const char* interface, const char* method,
                                        const char* arguments) {
    GVariant* values = arguments ? g_variant_new_parsed(arguments) : nullptr;
    return Owned<GVariant, g_variant_unref>(
        g_dbus_connection_call_sync(bus_.get(), name_.c_str(), path.c_str(), interface, method, values,
                                    nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, 5000, nullptr, nullptr));
  }

  /// Makes the object at `path` answer a method. `in` and `out` are D-Bus signatures; `code` is Python that
  /// assigns the reply to `ret`. Throws std::runtime_error if the mock refuses.
  void answer(const std::string& path, const std::string& interface, const std::string& method,
              const std::string& in, const std::string& out, const std::string& code) {
    require(call(path, kMock, "AddMethod",
                 tuple({quoted(interface), quoted(method), quoted(in), quoted(out), quoted(code)}).c_str()));
  }

  /// Emits a signal. `values` is the list of its arguments in GVariant's text format, each as a variant.
  /// Throws std::runtime_error if the mock refuses.
  void emit(const std::string& path, const std::string& interface, const std::string& signal,
            const std::string& signature, const std::string& values) {
    require(call(path, kMock, "EmitSignal",
                 tuple({quoted(interface), quoted(signal), quoted(signature), values}).c_str()));
  }

  /// Returns a string in GVariant's text format. The text must not contain ' or \.
  static std::string quoted(const std::string& text) { return "'" + text + "'"; }

 private:
  static std::string addressOf(const PrivateBus& bus) {
    return *bus.environment().at("DBUS_SESSION_BUS_ADDRESS");
  }
  static std::vector<std::string> command(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"/usr/bin/python3", "-m", "dbusmock"});
    return arguments;
  }
  static std::string tuple(const std::vector<std::string>& parts) {
    std::string text;
    for (const auto& part : parts) {
      text += (text.empty() ? "(" : ", ") + part;
    }
    return text + ")";
  }
  void require(const Owned<GVariant, g_variant_unref>& reply) const {
    if (!reply) {
      throw std::runtime_error("the mock of " + name_ + " refused a call. Its output:\n" + process_.output());
    }
  }

  std::string name_;
  ChildProcess process_;
  Owned<GDBusConnection, g_object_unref> bus_;
};

}  // namespace nivlo::test
