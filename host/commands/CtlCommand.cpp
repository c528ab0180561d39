#include "host/commands/CtlCommand.hpp"

#include <iostream>

#include <CLI/App.hpp>

#include "host/commands/Choices.hpp"
#include "host/commands/SharedOptions.hpp"
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

void printStatus(GVariant* values, bool json) {
  const Owned<GVariant, g_variant_unref> status(g_variant_get_child_value(values, 0));
  std::cout << (json ? statusAsJson(status.get()) : statusInWords(status.get())) << '\n';
}

}  // namespace

CtlCommand::CtlCommand(CLI::App& app)
    : Command(app, "ctl", "Control the Nivlo that is running in this session") {
  arguments().require_subcommand(1);
  arguments().footer(
      "Exit status: 0 done, 1 refused, 2 wrong usage, 3 Nivlo is not running in this session.\n"
      "Other programs can do the same over D-Bus: org.nivlo.Wallpaper, at /org/nivlo/Wallpaper.");
  add("status", "Show what the wallpaper is doing, and why the camera is off", "GetStatus")
      .add_flag("--json", json_, "Print one JSON object");
  add("pause", "Close the camera and keep showing the last picture", "Pause");
  add("resume", "Continue after a pause", "Resume");
  add("swap", "Switch between the back and the front camera", "Swap");
  add("preset", "Show another preset", "SetPreset")
      .add_option("NUMBER", preset_, "The preset, counted from 1 (see 'nivlo presets')")
      ->type_name("")
      ->check(checkCount)
      ->required();
  addChoice(add("scan", "Offer the codes that the camera sees, or ignore them", "SetScanning"), "STATE",
            kOnOff, scanning_, "Whether to offer codes")
      ->required();
  add("quit", "End Nivlo, and wait until it is gone", "Quit");
}

CLI::App& CtlCommand::add(const std::string& name, const std::string& description, const char* method) {
  auto* command = arguments().add_subcommand(name, description);
  command->callback([this, method] { method_ = method; });
  return *command;
}

GVariant* CtlCommand::argumentsOfCall() const {
  if (preset_) {
    return g_variant_new("(i)", *preset_);
  }
  return scanning_ ? g_variant_new("(b)", *scanning_) : nullptr;
}

int CtlCommand::run() const {
  const ControlClient client;
  const auto answer = client.call(method_.c_str(), argumentsOfCall());
  if (answer.outcome == Outcome::NotRunning) {
    return fail(answer.error, kNotRunning);
  }
  if (method_ == "Quit") {
    // The program may have ended before its answer was sent.
    return client.waitUntilGone(kEndingTime)
               ? 0
               : fail("Nivlo was asked to end but is still running; its log may say why", kRefused);
  }
  if (answer.outcome == Outcome::Refused) {
    return fail(answer.error, kRefused);
  }
  if (method_ == "GetStatus") {
    printStatus(answer.values.get(), json_);
  }
  return 0;
}

}  // namespace nivlo
