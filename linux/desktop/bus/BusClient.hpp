// Calls, signals and services on a message bus. What a handle began ends with the handle.
#pragma once

#include <functional>
#include <string>

#include <gio/gio.h>
#include <gio/gunixfdlist.h>

#include "linux/handles/Owned.hpp"

// Main thread only. Everything here is asynchronous. No handler is called from a constructor, or after the
// handle's destructor.
namespace nivlo {

/// Calls the methods of a service, which is never started for it. Replies that have not come when the object
/// is destroyed are dropped.
class MethodCalls {
 public:
  /// A method, with the object and the interface that it is called on.
  struct Target {
    const char* path;
    const char* interface;
    const char* method;
  };
  /// The result of a call.
  struct Reply {
    GVariant* values = nullptr;          ///< a tuple; null when the call failed
    GUnixFDList* descriptors = nullptr;  ///< null when the reply has none
    std::string error;                   ///< the cause when the call failed
  };

  MethodCalls(GDBusConnection* connection, std::string service);
  ~MethodCalls();
  MethodCalls(const MethodCalls&) = delete;
  MethodCalls& operator=(const MethodCalls&) = delete;

  /// Sends a call. Takes ownership of the arguments, a floating tuple, or null for none. `answered` is called
  /// once, unless the reply is dropped.
  void call(const Target& target, GVariant* arguments, std::function<void(const Reply&)> answered);

  /// Drops the replies that have not come yet. The service carries out the calls all the same.
  void dropAnswers();

 private:
  Owned<GDBusConnection, g_object_unref> connection_;
  std::string service_;
  Owned<GCancellable, g_object_unref> cancellable_;
};

/// Calls a handler with the arguments of each signal of one kind that a service sends.
class SignalSubscription {
 public:
  /// The source of a signal.
  struct Source {
    const char* service;
    const char* path;  ///< null for any object
    const char* interface;
    const char* signal;
  };

  SignalSubscription(GDBusConnection* connection, const Source& source,
                     std::function<void(GVariant* values)> handler);
  ~SignalSubscription();
  SignalSubscription(const SignalSubscription&) = delete;
  SignalSubscription& operator=(const SignalSubscription&) = delete;

 private:
  Owned<GDBusConnection, g_object_unref> connection_;
  std::function<void(GVariant*)> handler_;
  guint id_;
};

/// Tells whether a service is running: once soon after the construction, and then at each change. A service
/// that is replaced by another process is reported as gone and running again.
class ServiceWatch {
 public:
  ServiceWatch(GDBusConnection* connection, const std::string& service, std::function<void(bool)> changed);
  ~ServiceWatch();
  ServiceWatch(const ServiceWatch&) = delete;
  ServiceWatch& operator=(const ServiceWatch&) = delete;

 private:
  std::function<void(bool)> changed_;
  guint id_;
};

}  // namespace nivlo
