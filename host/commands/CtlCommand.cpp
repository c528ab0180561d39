#include "host/commands/CtlCommand.hpp"

#include <iostream>

#include "host/control/client/ControlClient.hpp"
#include "host/control/client/StatusText.hpp"

namespace nivlo {

namespace {

using Outcome = ControlClient::Outcome;

constexpr int kRefused = 1;
constexpr int kNotRunning = 3;
constexpr std::chrono::seconds kEndingTime{10};

int fail(const std::string& error, int status) {
  std::cerr << "nivlo: " << error << '\n';
  return status;
}

GVariant* argumentsOf(const CtlOptions& options) {
  if (options.preset) {
    return g_variant_new("(i)", *options.preset);
  }
  return options.scanning ? g_variant_new("(b)", *options.scanning) : nullptr;
}

void printStatus(GVariant* values, bool json) {
  const Owned<GVariant, g_variant_unref> status(g_variant_get_child_value(values, 0));
  std::cout << (json ? statusAsJson(status.get()) : statusInWords(status.get())) << '\n';
}

}  // namespace

int runCtl(const CtlOptions& options) {
  const ControlClient client;
  const auto answer = client.call(options.method.c_str(), argumentsOf(options));
  if (answer.outcome == Outcome::NotRunning) {
    return fail(answer.error, kNotRunning);
  }
  if (options.method == "Quit") {
    // Its end may have come before its answer.
    return client.waitUntilGone(kEndingTime)
               ? 0
               : fail("nivlo was asked to end but still runs; see its log", kRefused);
  }
  if (answer.outcome == Outcome::Refused) {
    return fail(answer.error, kRefused);
  }
  if (options.method == "GetStatus") {
    printStatus(answer.values.get(), options.json);
  }
  return 0;
}

}  // namespace nivlo
