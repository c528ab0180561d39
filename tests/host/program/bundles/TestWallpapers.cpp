// Wallpapers that are written as a stranger would write them, some of them badly.
#include <array>
#include <chrono>
#include <cstdint>
#include <stdexcept>

#include "platform/Foundation/Dispatch.hpp"
#include "platform/Foundation/NSBundle.hpp"
#include "platform/Foundation/NSLog.hpp"
#include "platform/HostContract/WallpaperClass.hpp"
#include "platform/UIKit/UIAlertView.hpp"

namespace strangers {

using nivlo::CGRect;
using nivlo::NSDictionary;

/// One colour, the preset's.
class Paint : public nivlo::UIView, public nivlo::Wallpaper {
 public:
  static std::string identifier() { return "test.paint"; }
  static std::vector<NSDictionary> presetWallpaperOptions() { return {{{"blue", false}}, {{"blue", true}}}; }
  static std::string descriptionForOptions(const NSDictionary& options) {
    return nivlo::boolValue(options.objectForKey("blue")) ? "all blue" : "all red";
  }
  static std::shared_ptr<nivlo::UIImage> thumbnailImageForOptions(const NSDictionary&) {
    const auto path = nivlo::NSBundle::bundleForClass("Paint")->pathForResource("sample", "png");
    return path ? nivlo::UIImage::imageWithContentsOfFile(*path) : nullptr;
  }
  static std::shared_ptr<Paint> initWithFrame(CGRect frame) {
    return isUsableFrame(frame) ? std::shared_ptr<Paint>(new Paint(frame)) : nullptr;
  }
  ~Paint() override { nivlo::NSLog("paint: gone"); }

  void setWallpaperOptions(const NSDictionary& options) override {
    blue_ = nivlo::boolValue(options.objectForKey("blue"));
    draw();
  }
  void setWallpaperVariant(long variant) override { nivlo::NSLog("paint: variant %ld", variant); }
  std::shared_ptr<UIView> view() override { return shared_from_this(); }
  void setAnimating(bool animating) override {
    nivlo::NSLog(animating ? "paint: animating" : "paint: still");
    if (animating) {
      draw();
    }
  }

 private:
  explicit Paint(CGRect frame) : UIView(frame) {}

  void draw() {
    auto frame = std::make_shared<nivlo::VideoFrame>();
    const auto pixel = std::make_shared<std::array<std::uint8_t, 4>>();
    pixel->at(blue_ ? 0 : 2) = 255;
    frame->format = nivlo::PixelFormat::BGRx;
    frame->width = frame->height = 1;
    frame->planes[0] = {pixel->data(), 4};
    frame->captureTime = std::chrono::steady_clock::now();
    frame->storage = pixel;
    layer()->setContents(frame);
  }

  bool blue_ = false;
};

/// Has nothing but what is required, and throws on the screen.
class Plain : public nivlo::UIView, public nivlo::Wallpaper {
 public:
  static std::string identifier() { return "test.plain"; }
  static std::shared_ptr<Plain> initWithFrame(CGRect frame) {
    return std::shared_ptr<Plain>(new Plain(frame));
  }

  void setWallpaperOptions(const NSDictionary&) override { throw std::runtime_error("no options please"); }
  void setWallpaperVariant(long) override { throw 7; }
  std::shared_ptr<UIView> view() override { return shared_from_this(); }
  void setAnimating(bool) override { throw std::runtime_error("no animation\x1b[2J please"); }

 protected:
  explicit Plain(CGRect frame) : UIView(frame) {}
};

/// Shows an alert just after it has been told to stop.
class Late : public Plain {
 public:
  explicit Late(CGRect frame) : Plain(frame) {}
  static std::string identifier() { return "test.late"; }
  static std::shared_ptr<Late> initWithFrame(CGRect frame) { return std::make_shared<Late>(frame); }
  void setAnimating(bool animating) override {
    if (!animating) {
      nivlo::dispatch_async(nivlo::dispatch_get_main_queue(), [] {
        nivlo::UIAlertView::initWithTitle("Too late", "", nullptr, "OK", {})->show();
      });
    }
  }
};

struct Unshowable : nivlo::Wallpaper {
  static std::string identifier() { return "test.unshowable"; }
  void setWallpaperOptions(const NSDictionary&) override {}
  void setWallpaperVariant(long) override {}
  std::shared_ptr<nivlo::UIView> view() override { return nullptr; }
  void setAnimating(bool) override {}
};

struct Viewless : Unshowable {
  static std::shared_ptr<Viewless> initWithFrame(CGRect) { return std::make_shared<Viewless>(); }
};

struct Unbuildable : Unshowable {
  static std::shared_ptr<Unbuildable> initWithFrame(CGRect) { return nullptr; }
};

struct Throwing : Unshowable {
  static std::shared_ptr<Throwing> initWithFrame(CGRect) { throw std::runtime_error("not today"); }
};

struct Unaskable : Viewless {
  static std::vector<NSDictionary> presetWallpaperOptions() { throw std::runtime_error("no presets today"); }
};

NIVLO_EXPORT_WALLPAPER(Paint);
NIVLO_EXPORT_WALLPAPER(Plain);
NIVLO_EXPORT_WALLPAPER(Late);
NIVLO_EXPORT_WALLPAPER(Viewless);
NIVLO_EXPORT_WALLPAPER(Unbuildable);
NIVLO_EXPORT_WALLPAPER(Throwing);
NIVLO_EXPORT_WALLPAPER(Unaskable);

}  // namespace strangers
