#include "host/commands/CtlArguments.hpp"

#include <CLI/CLI.hpp>

namespace nivlo {

CtlArguments::CtlArguments(CLI::App& app)
    : command_(app.add_subcommand("ctl", "Control the nivlo that runs in this session")) {
  command_->require_subcommand(1);
  command_->footer(
      "Exit status: 0 done, 1 refused, 2 wrong usage, 3 nivlo does not run in this session.\n"
      "Other programs do the same over D-Bus: org.nivlo.Wallpaper, at /org/nivlo/Wallpaper.");
  add("status", "Tell what is shown, and why the camera is off", "GetStatus")
      ->add_flag("--json", options_.json, "As one JSON object");
  add("pause", "Close the camera and keep the last picture", "Pause");
  add("resume", "Go on after a pause", "Resume");
  add("swap", "Change to the camera on the other side", "Swap");
  add("preset", "Show another preset", "SetPreset")
      ->add_option("NUMBER", options_.preset, "See 'nivlo presets'")
      ->required();
  add("scan", "Offer the codes that the camera sees, or leave them alone", "SetScanning")
      ->add_option_function<std::string>(
          "STATE", [this](const std::string& state) { options_.scanning = state == "on"; }, "on or off")
      ->required()
      ->check(CLI::IsMember({"on", "off"}));
  add("quit", "End nivlo, and wait until it has gone", "Quit");
}

CLI::App* CtlArguments::add(const std::string& name, const std::string& description, const char* method) {
  auto* command = command_->add_subcommand(name, description);
  command->callback([this, method] { options_.method = method; });
  return command;
}

}  // namespace nivlo
