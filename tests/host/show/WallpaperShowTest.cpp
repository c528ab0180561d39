// The calls to a wallpaper while it is shown, and while another one takes its place.
#include <gmock/gmock.h>

#include "host/show/WallpaperShow.hpp"
#include "tests/fakes/FakeMachine.hpp"
#include "tests/support/TemporaryDirectory.hpp"

namespace nivlo::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Events = std::vector<std::string>;

Events events;
std::function<void()> onOptions;  // called when options are set

/// Notes what it is told, under the name of its subclass.
template <typename Class>
class Noted : public UIView, public Wallpaper {
 public:
  static std::string identifier() { return Class::kName; }
  static std::shared_ptr<Class> initWithFrame(CGRect frame) {
    note("built");
    return std::shared_ptr<Class>(new Class(frame));
  }
  explicit Noted(CGRect frame) : UIView(frame) {}
  ~Noted() override { note("gone"); }

  void setWallpaperOptions(const NSDictionary& options) override {
    for (const auto& [key, value] : options.entries()) {
      note(key + "=" +
           (std::holds_alternative<bool>(value) ? std::to_string(std::get<bool>(value))
                                                : std::get<std::string>(value)));
    }
    if (onOptions) {
      onOptions();
    }
  }
  void setWallpaperVariant(long variant) override { note("variant " + std::to_string(variant)); }
  std::shared_ptr<UIView> view() override { return shared_from_this(); }
  void setAnimating(bool animating) override { note(animating ? "on" : "off"); }

 private:
  static void note(const std::string& event) { events.push_back(Class::kName + (" " + event)); }
};

struct Cam : Noted<Cam> {
  using Noted::Noted;
  static constexpr auto kName = "cam";
  static std::vector<NSDictionary> presetWallpaperOptions() {
    return {{{kScansCodesKey, true}, {kCameraPositionKey, kCameraPositionBack}},
            {{kScansCodesKey, false}, {kCameraPositionKey, kCameraPositionFront}}};
  }
};

struct Sea : Noted<Sea> {
  using Noted::Noted;
  static constexpr auto kName = "sea";
};

struct Fog : Noted<Fog> {
  using Noted::Noted;
  static constexpr auto kName = "fog";
  static std::shared_ptr<Fog> initWithFrame(CGRect) { throw std::runtime_error("too thick"); }
};

extern "C" {
extern const WallpaperClass nivloWallpaperClass_Cam, nivloWallpaperClass_Sea, nivloWallpaperClass_Fog;
}
NIVLO_EXPORT_WALLPAPER(Cam);
NIVLO_EXPORT_WALLPAPER(Sea);
NIVLO_EXPORT_WALLPAPER(Fog);

class WallpaperShowTest : public testing::Test {
 protected:
  WallpaperShowTest() { events.clear(); }

  std::shared_ptr<const WallpaperBundle> bundle(const WallpaperClass& wallpaperClass) {
    directory_.write("Info.plist", "<plist><dict><key>CFBundleName</key><string>" +
                                       std::string(wallpaperClass.name) + "</string></dict></plist>");
    std::string error;
    return WallpaperBundle::ask(NSBundle::bundleWithPath(directory_.path(), &error), wallpaperClass, &error);
  }
  std::unique_ptr<WallpaperShow> show(const WallpaperClass& wallpaperClass, const ShowOptions& options = {}) {
    return WallpaperShow::make(bundle(wallpaperClass), options, {640, 480}, cameras_, scanPermit_, &error_);
  }
  static Events taken() { return std::exchange(events, {}); }

  FakeMachine machine_;
  TemporaryDirectory directory_;
  std::shared_ptr<CameraActivity> cameras_ = std::make_shared<CameraActivity>();
  std::shared_ptr<ScanPermit> scanPermit_ = std::make_shared<ScanPermit>();
  std::string error_;
};

TEST_F(WallpaperShowTest, TheOldWallpaperHasLetGoBeforeTheNewOneStarts) {
  const auto shown = show(nivloWallpaperClass_Cam);
  shown->presence().begin();
  shown->setVariant(kWallpaperVariantDark);
  EXPECT_THAT(taken(), ElementsAre("cam built", "cam variant 0", "cam qr=1", "cam cameraPosition=back",
                                   "cam on", "cam variant 1"));
  machine_.alerts.present({.title = "of the old wallpaper"}, {[] {}, [](long) {}, [] {}, [] {}});
  const auto view = shown->view();
  EXPECT_EQ(shown->replace(bundle(nivloWallpaperClass_Sea), {}), "");
  EXPECT_THAT(taken(), ElementsAre("sea built", "cam off", "cam gone", "sea variant 1", "sea on"));
  EXPECT_THAT(machine_.alerts.shown, IsEmpty());
  EXPECT_EQ(shown->view().view, view.view) << "the surface knows no other";
  EXPECT_EQ(view.view->subviews().size(), 1u);
  shown->presence().setPaused(true);
  EXPECT_EQ(shown->replace(bundle(nivloWallpaperClass_Cam), {.preset = 2}), "");
  EXPECT_THAT(taken(), ElementsAre("sea off", "cam built", "sea off", "sea gone", "cam variant 1", "cam qr=0",
                                   "cam cameraPosition=front"))
      << "what is paused stays paused";
}

TEST_F(WallpaperShowTest, AWallpaperIsBuiltAnewWithTheOptionsOfNow) {
  const auto shown = show(nivloWallpaperClass_Cam);
  shown->presence().begin();
  shown->change({.preset = 2, .scans = true});
  cameras_->follow(CameraEvent::Opened, {{"back", "Back", AVCaptureDevicePosition::Back}, nullptr});
  taken();
  EXPECT_EQ(shown->rebuild(), "");
  EXPECT_THAT(taken(), ElementsAre("cam built", "cam off", "cam gone", "cam variant 0", "cam qr=1",
                                   "cam cameraPosition=back", "cam on"));
  EXPECT_EQ(shown->status().preset, 2);
}

TEST_F(WallpaperShowTest, AWallpaperThatCannotBeShownLeavesTheOldOneAsItWas) {
  const auto shown = show(nivloWallpaperClass_Cam);
  shown->presence().begin();
  taken();
  EXPECT_THAT(shown->replace(bundle(nivloWallpaperClass_Fog), {}), HasSubstr("Fog cannot be shown"));
  EXPECT_THAT(shown->replace(bundle(nivloWallpaperClass_Sea), {.preset = 2}), HasSubstr("Sea has 1 preset;"));
  EXPECT_THAT(taken(), IsEmpty());
  EXPECT_EQ(shown->bundle().name(), "Cam");
  EXPECT_EQ(show(nivloWallpaperClass_Fog), nullptr);
  EXPECT_THAT(error_, HasSubstr("too thick"));
}

TEST_F(WallpaperShowTest, AWallpaperIsOnlyGivenOptionsThatItUnderstands) {
  EXPECT_EQ(show(nivloWallpaperClass_Sea, {.scans = true}), nullptr);
  EXPECT_THAT(error_, HasSubstr("Sea does not read codes"));
  const auto sea = show(nivloWallpaperClass_Sea);
  taken();
  EXPECT_THAT(sea->swapCameras(), HasSubstr("Sea has no camera to choose"));
  EXPECT_EQ(sea->change({.preset = 1}), "");
  EXPECT_THAT(taken(), IsEmpty()) << "no camera slipped into its options";
  EXPECT_FALSE(sea->status().scanning.has_value());
  EXPECT_TRUE(scanPermit_->mayLook());
  const auto cam = show(nivloWallpaperClass_Cam, {.scans = false});
  EXPECT_EQ(cam->status().scanning, false);
  EXPECT_FALSE(scanPermit_->mayLook());
  taken();
  cameras_->follow(CameraEvent::Opened, {{"front", "Front", AVCaptureDevicePosition::Front}, nullptr});
  EXPECT_EQ(cam->change({.scans = true}), "");
  EXPECT_TRUE(scanPermit_->mayLook());
  EXPECT_THAT(taken(), ElementsAre("cam qr=1", "cam cameraPosition=front")) << "a shake had switched cameras";
  EXPECT_EQ(cam->swapCameras(), "");
  EXPECT_THAT(taken(), ElementsAre("cam qr=1", "cam cameraPosition=back"));
}

TEST_F(WallpaperShowTest, ASwapThatCannotBeDoneIsRefusedAndForgotten) {
  const auto cam = show(nivloWallpaperClass_Cam);
  const ObservedCamera back{{"back", "Back", AVCaptureDevicePosition::Back}, nullptr};
  cameras_->follow(CameraEvent::Opened, back);
  onOptions = [this] { cameras_->follow(CameraEvent::Refused, {{.uniqueID = "front"}, nullptr}); };
  EXPECT_THAT(cam->swapCameras(), HasSubstr("the front camera cannot be opened"));
  onOptions = nullptr;
  cameras_->follow(CameraEvent::Closed, back);
  machine_.cameras.infos.pop_back();
  taken();
  EXPECT_THAT(cam->swapCameras(), HasSubstr("there is no front camera"));
  EXPECT_THAT(taken(), IsEmpty());
}

TEST_F(WallpaperShowTest, TheStatusTellsACameraThatDeliversFromOneThatDoesNotAndFromOneThatIsGone) {
  const auto cam = show(nivloWallpaperClass_Cam);
  const auto pulse = std::make_shared<CameraPulse>();
  cameras_->follow(CameraEvent::Opened, {{"back", "Back", AVCaptureDevicePosition::Back}, pulse});
  EXPECT_EQ(cam->status().cameraState, CameraState::Waiting);
  pulse->beat();
  EXPECT_EQ(cam->status().cameraState, CameraState::Delivering);
  cameras_->follow(CameraEvent::Opened, {{"gone", "Gone", AVCaptureDevicePosition::Front}, nullptr});
  EXPECT_EQ(cam->status().cameraState, CameraState::Unplugged);
  machine_.cameras.infos[1] = {.uniqueID = "gone", .connected = false};
  EXPECT_EQ(cam->status().cameraState, CameraState::Unplugged) << "listed, because it was chosen";
}

}  // namespace

}  // namespace nivlo::test
