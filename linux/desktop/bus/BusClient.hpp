// What a program wants of a message bus, in handles that end it when they go.
#pragma once

#include <functional>
#include <string>

#include <gio/gio.h>
#include <gio/gunixfdlist.h>

#include "linux/handles/Owned.hpp"

// Main thread only. Everything is asynchronous, and nothing is called within a constructor or after a
// destructor.
namespace nivlo {

/// Calls methods of one service. Never starts the service. The answers to come are dropped with the object.
class MethodCalls {
 public:
  struct Target {
    const char* path;
    const char* interface;
    const char* method;
  };
  struct Reply {
    GVariant* values = nullptr;          ///< a tuple; null where the call failed
    GUnixFDList* descriptors = nullptr;  ///< null where there are none
    std::string error;                   ///< why it failed
  };

  MethodCalls(GDBusConnection* connection, std::string service);
  ~MethodCalls();
  MethodCalls(const MethodCalls&) = delete;
  MethodCalls& operator=(const MethodCalls&) = delete;

  /// Takes the arguments, a floating tuple or null. `answered` is called once, unless the answer is dropped.
  void call(const Target& target, GVariant* arguments, std::function<void(const Reply&)> answered);

  /// Drops the answers to come; what was sent is done all the same.
  void dropAnswers();

 private:
  Owned<GDBusConnection, g_object_unref> connection_;
  std::string service_;
  Owned<GCancellable, g_object_unref> cancellable_;
};

/// Listens to a signal of a service.
class SignalSubscription {
 public:
  struct Source {
    const char* service;
    const char* path;  ///< null for any
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

/// Says whether a service is there: once soon after the construction, and after each change.
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
