#include "platform/Foundation/NSBundle.hpp"

#include <map>
#include <mutex>
#include <system_error>

#include <pugixml.hpp>

namespace nivlo {

namespace {

std::map<std::string, std::shared_ptr<NSBundle>, std::less<>>& registeredClasses() {
  static std::map<std::string, std::shared_ptr<NSBundle>, std::less<>> classes;
  return classes;
}

struct MainBundle {
  std::mutex mutex;
  std::shared_ptr<const NSBundle> bundle;
};

MainBundle& currentMainBundle() {
  static MainBundle main;
  return main;
}

/// Leaves out arrays, dictionaries, dates and data, because nothing asks for them.
NSDictionary dictionaryFromPropertyList(const pugi::xml_node& dict) {
  NSDictionary result;
  for (const auto& key : dict.children("key")) {
    const auto value = key.next_sibling();
    const std::string_view kind = value.name();
    if (kind == "string") {
      result.setObject(std::string(value.text().get()), key.text().get());
    } else if (kind == "integer" || kind == "real") {
      result.setObject(value.text().as_double(), key.text().get());
    } else if (kind == "true" || kind == "false") {
      result.setObject(kind == "true", key.text().get());
    }
  }
  return result;
}

}  // namespace

std::shared_ptr<NSBundle> NSBundle::bundleWithPath(const std::filesystem::path& path, std::string* error) {
  const auto infoPath = path / "Info.plist";
  // Opening a pipe would wait for its writer.
  if (std::error_code problem; !std::filesystem::is_regular_file(infoPath, problem)) {
    *error = infoPath.string() + ": it is missing, or not a regular file";
    return nullptr;
  }
  pugi::xml_document document;
  const auto result = document.load_file(infoPath.c_str());
  const auto dict = document.child("plist").child("dict");
  if (!result || !dict) {
    *error = infoPath.string() + ": " + (result ? "it does not hold a property list" : result.description());
    return nullptr;
  }
  return std::shared_ptr<NSBundle>(new NSBundle(path, dictionaryFromPropertyList(dict)));
}

std::shared_ptr<const NSBundle> NSBundle::mainBundle() {
  auto& main = currentMainBundle();
  const std::lock_guard lock(main.mutex);
  if (!main.bundle) {
    main.bundle.reset(new NSBundle({}, {}));
  }
  return main.bundle;
}

void NSBundle::setMainBundle(std::filesystem::path path, NSDictionary info) {
  auto& main = currentMainBundle();
  const std::lock_guard lock(main.mutex);
  main.bundle.reset(new NSBundle(std::move(path), std::move(info)));
}

std::shared_ptr<NSBundle> NSBundle::bundleForClass(std::string_view className) {
  const auto found = registeredClasses().find(className);
  return found == registeredClasses().end() ? nullptr : found->second;
}

void NSBundle::registerClass(std::string_view className, std::shared_ptr<NSBundle> bundle) {
  registeredClasses().insert_or_assign(std::string(className), std::move(bundle));
}

std::string NSBundle::infoString(std::string_view key) const {
  const auto* value = info_.objectForKey(key);
  const auto* text = value ? std::get_if<std::string>(value) : nullptr;
  return text ? *text : std::string();
}

std::optional<std::filesystem::path> NSBundle::pathForResource(std::string_view name,
                                                               std::string_view type) const {
  std::error_code ignored;
  auto path = path_ / (std::string(name) + "." + std::string(type));
  if (!std::filesystem::is_regular_file(path, ignored)) {
    return std::nullopt;
  }
  return path;
}

}  // namespace nivlo
