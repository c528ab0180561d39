#include "host/bundle/BundleLoader.hpp"

#include <dlfcn.h>
#include <fmt/format.h>

#include "host/text/VisibleText.hpp"
#include "linux/program/ProgramFile.hpp"
#include "platform/Foundation/NSBundle.hpp"
#include "platform/HostContract/WallpaperInfoKeys.hpp"

namespace nivlo {

namespace {

/// Returns why the host cannot use the exported symbol; empty when it can.
std::string whyUnusable(const WallpaperClass& wallpaperClass, const std::string& className) {
  if (wallpaperClass.mark != kWallpaperClassMark) {
    return fmt::format("its class {} is not a wallpaper class; export it with NIVLO_EXPORT_WALLPAPER",
                       className);
  }
  if (wallpaperClass.contractVersion != kWallpaperContractVersion) {
    return fmt::format(
        "it was built for version {} of the wallpaper contract, and this program has version {}; build it "
        "against "
        "the installed Nivlo",
        wallpaperClass.contractVersion, kWallpaperContractVersion);
  }
  if (wallpaperClass.name != className) {
    return fmt::format("Info.plist names the class {}, but the bundle exports {}", className,
                       wallpaperClass.name);
  }
  return "";
}

/// Returns null, with the cause in `*error`, where there is no class that the host can use.
const WallpaperClass* loadClass(const NSBundle& bundle, const std::string& className, std::string* error) {
  const auto executable = bundle.infoString(kExecutableKey);
  if (className.empty() || executable.empty() || executable.find('/') != std::string::npos) {
    *error = fmt::format(
        "its Info.plist must name a class under {} and, under {}, the shared object in the bundle that holds "
        "it",
        kPrincipalClassKey, kExecutableKey);
    return nullptr;
  }
  // Never closed: closures, threads and tables of the bundle may live until the process ends.
  void* library = dlopen((bundle.bundlePath() / executable).c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  if (!library) {
    *error = dlerror();
    return nullptr;
  }
  const auto symbol = kWallpaperClassSymbolPrefix + className;
  const auto* wallpaperClass = static_cast<const WallpaperClass*>(dlsym(library, symbol.c_str()));
  *error = wallpaperClass ? whyUnusable(*wallpaperClass, className)
                          : fmt::format("{} holds no class {}", executable, className);
  return error->empty() ? wallpaperClass : nullptr;
}

}  // namespace

std::filesystem::path defaultBundlePath() {
  return programFile("NivloWallpaper.bundle", installedLibraries() / "NivloWallpaper.bundle");
}

std::shared_ptr<const WallpaperBundle> openWallpaperBundle(const std::filesystem::path& path,
                                                           std::string* error) {
  auto folder = std::filesystem::absolute(path.empty() ? defaultBundlePath() : path).lexically_normal();
  if (!folder.has_filename()) {
    folder = folder.parent_path();  // "Tide.bundle/"
  }
  std::string cause;
  std::shared_ptr<const WallpaperBundle> result;
  if (const auto bundle = NSBundle::bundleWithPath(folder, &cause)) {
    const auto className = bundle->infoString(kPrincipalClassKey);
    if (const auto* wallpaperClass = loadClass(*bundle, className, &cause)) {
      NSBundle::registerClass(className, bundle);
      result = WallpaperBundle::ask(bundle, *wallpaperClass, &cause);
    }
  }
  if (!result) {
    *error = visibleText(fmt::format("the wallpaper bundle {} cannot be used: {}", folder.string(), cause));
  }
  return result;
}

}  // namespace nivlo
