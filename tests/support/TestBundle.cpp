#include "tests/support/TestBundle.hpp"

#include <fstream>

#include <fmt/format.h>

namespace nivlo::test {

std::filesystem::path writeBundle(const std::filesystem::path& folder, const std::string& name,
                                  const std::string& className, const std::filesystem::path& sharedObject,
                                  const std::string& executable) {
  auto bundle = folder / (name + ".bundle");
  std::filesystem::create_directories(bundle);
  std::filesystem::copy_file(sharedObject, bundle / "test.so",
                             std::filesystem::copy_options::overwrite_existing);
  std::ofstream(bundle / "Info.plist") << fmt::format(
      "<plist><dict><key>NSPrincipalClass</key><string>{}</string><key>CFBundleExecutable</key><string>{}</"
      "string>"
      "<key>CFBundleName</key><string>{}</string></dict></plist>",
      className, executable, name);
  return bundle;
}

}  // namespace nivlo::test
