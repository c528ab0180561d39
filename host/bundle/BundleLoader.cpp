#include "host/bundle/BundleLoader.hpp"

#include <system_error>

#include <dlfcn.h>
#include <fmt/format.h>

#include "linux/program/ProgramFile.hpp"
#include "platform/Foundation/NSBundle.hpp"

namespace nivlo {

namespace {

/// Returns what does not fit, empty when all does.
std::string misfit(const WallpaperClass& wallpaperClass, const std::string& className) {
  if (wallpaperClass.mark != kWallpaperClassMark) {
    return fmt::format("its class {} is no wallpaper class; export it with NIVLO_EXPORT_WALLPAPER",
                       className);
  }
  if (wallpaperClass.contractVersion != kWallpaperContractVersion) {
    return fmt::format(
        "it was built for version {} of the wallpaper contract, this program has version {}; build both "
        "from the same source",
        wallpaperClass.contractVersion, kWallpaperContractVersion);
  }
  if (wallpaperClass.name != className) {
    return fmt::format("Info.plist names the class {}, but the bundle exports {}", className,
                       wallpaperClass.name);
  }
  return "";
}

}  // namespace

std::filesystem::path defaultBundlePath() {
  return programFile("NivloWallpaper.bundle", "../lib/nivlo/NivloWallpaper.bundle");
}

const WallpaperClass* loadWallpaperClass(const std::filesystem::path& bundlePath, std::string* error) {
  const auto refuse = [&](const std::string& cause) {
    *error = fmt::format("the wallpaper bundle {} cannot be used: {}", bundlePath.string(), cause);
    return nullptr;
  };
  std::string cause;
  const auto bundle = NSBundle::bundleWithPath(bundlePath, &cause);
  if (!bundle) {
    return refuse(cause);
  }
  const auto className = bundle->infoString("NSPrincipalClass");
  const auto executable = bundle->infoString("CFBundleExecutable");
  if (className.empty() || executable.empty() || executable.find('/') != std::string::npos) {
    return refuse(
        "its Info.plist must name a class under NSPrincipalClass and, under CFBundleExecutable, the shared "
        "object in the bundle that holds it");
  }
  // Never unloaded: closures, threads and tables of the bundle may live until the very end.
  void* library = dlopen((bundlePath / executable).c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  if (!library) {
    return refuse(dlerror());
  }
  const auto symbol = kWallpaperClassSymbolPrefix + className;
  const auto* wallpaperClass = static_cast<const WallpaperClass*>(dlsym(library, symbol.c_str()));
  if (!wallpaperClass) {
    return refuse(fmt::format("{} holds no class {}", executable, className));
  }
  if (const auto problem = misfit(*wallpaperClass, className); !problem.empty()) {
    return refuse(problem);
  }
  NSBundle::registerClass(className, bundle);
  return wallpaperClass;
}

}  // namespace nivlo
