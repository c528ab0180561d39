#include "host/commands/Reference.hpp"

#include <nlohmann/json.hpp>

#include "host/commands/AllCommands.hpp"
#include "host/control/ControlInterface.hpp"
#include "host/service/LauncherTexts.hpp"

namespace nivlo {

namespace {

using Json = nlohmann::ordered_json;

Json described(const CLI::Option& option) {
  Json names = Json::array();
  for (const auto& name : option.get_snames()) {
    names.push_back("-" + name);
  }
  for (const auto& name : option.get_lnames()) {
    names.push_back("--" + name);
  }
  return {{"names", names},  // none: it is told by its place, and called `name`
          {"name", option.get_name(names.empty())},
          {"value", option.get_expected_max() > 0 ? option.get_type_name() : ""},
          {"takesValue", option.get_expected_max() > 0},
          {"repeated", option.get_expected_max() > 1},
          {"required", option.get_required()},
          {"default", option.get_default_str()},
          {"help", option.get_description()}};
}

Json described(const CLI::App& app) {
  Json options = Json::array();
  for (const auto* option : app.get_options([](const CLI::Option*) { return true; })) {
    options.push_back(described(*option));
  }
  Json commands = Json::array();
  for (const auto* command : app.get_subcommands([](const CLI::App*) { return true; })) {
    commands.push_back(described(*command));
  }
  return {{"name", app.get_name()},
          {"description", app.get_description()},
          {"footer", app.get_footer()},
          {"options", options},
          {"commands", commands}};
}

}  // namespace

std::string reference(const std::filesystem::path& program) {
  AllCommands commands;
  return Json{{"version", NIVLO_VERSION},
              {"command", described(commands.app())},
              {"interface", kControlDescription},
              {"unit", unitText({program.string(), "run"})}}
      .dump(1);
}

}  // namespace nivlo
