#include "Sea.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace tide {

namespace {

constexpr double kTurn = 2 * std::numbers::pi;
constexpr double kHoursOfDay = 24;
constexpr double kSunrise = 6;
constexpr double kSunset = 20;
constexpr int kWaves = 8;

struct Color {
  float r = 0;
  float g = 0;
  float b = 0;
};

constexpr Color rgb(std::uint32_t hex) {
  return {static_cast<float>(hex >> 16 & 255), static_cast<float>(hex >> 8 & 255),
          static_cast<float>(hex & 255)};
}

Color mixed(Color a, Color b, float part) {
  return {a.r + (b.r - a.r) * part, a.g + (b.g - a.g) * part, a.b + (b.b - a.b) * part};
}

Color plus(Color a, Color b, float part) { return {a.r + b.r * part, a.g + b.g * part, a.b + b.b * part}; }

/// The colours of one hour; those between two hours are mixed.
struct Palette {
  double hour;
  Color zenith, horizon;  ///< of the sky
  Color farWater, nearWater;
  Color glow;  ///< of the sun or the moon
};

constexpr std::array<Palette, 10> kDay{{
    {0.0, rgb(0x070d20), rgb(0x1c2b4a), rgb(0x1a2a48), rgb(0x050a17), rgb(0xd5dcf0)},
    {4.8, rgb(0x101a38), rgb(0x3c3d5c), rgb(0x2a3352), rgb(0x0a1122), rgb(0xd5dcf0)},
    {6.4, rgb(0x3d5f92), rgb(0xf6ad80), rgb(0xc08f80), rgb(0x24405a), rgb(0xffd9a0)},
    {9.0, rgb(0x3f86c9), rgb(0xc4e3ef), rgb(0x86b8cd), rgb(0x1d5c7a), rgb(0xfff3d0)},
    {13.0, rgb(0x2f7fd0), rgb(0xcfebf6), rgb(0x78bfd8), rgb(0x12628a), rgb(0xfffaf0)},
    {17.0, rgb(0x4a88c4), rgb(0xf2dfbd), rgb(0xa2b7b6), rgb(0x205c72), rgb(0xffe9b8)},
    {19.6, rgb(0x44406f), rgb(0xf78c56), rgb(0xb86c5c), rgb(0x2b2b4b), rgb(0xffb070)},
    {20.6, rgb(0x232a55), rgb(0x9a5c6c), rgb(0x564764), rgb(0x151a33), rgb(0xe8c8c0)},
    {22.0, rgb(0x0d1530), rgb(0x2a3456), rgb(0x243250), rgb(0x070d1d), rgb(0xd5dcf0)},
    {24.0, rgb(0x070d20), rgb(0x1c2b4a), rgb(0x1a2a48), rgb(0x050a17), rgb(0xd5dcf0)},
}};

/// Returns how much of a light's way from its rise to its set is done: 0 at its rise, 1 when it sets.
double progress(double hour, double rise, double set) {
  const double length = std::fmod(set - rise + kHoursOfDay, kHoursOfDay);
  return std::fmod(hour - rise + kHoursOfDay, kHoursOfDay) / length;
}

/// A number from 0 to 1 that looks random, and is the same for the same index.
float scattered(std::uint32_t index) {
  index = (index ^ 61U ^ (index >> 16U)) * 9U;
  index = (index ^ (index >> 4U)) * 0x27d4eb2dU;
  return static_cast<float>((index ^ (index >> 15U)) & 0xffffU) / 65535.0F;
}

/// Steps of less than one level are spread over neighbours, or a soft gradient would show as bands.
std::uint32_t pixel(Color color, int x, int y) {
  static constexpr std::array<float, 16> kThresholds{0.0F,   0.5F,   0.125F, 0.625F, 0.75F, 0.25F,
                                                     0.875F, 0.375F, 0.19F,  0.69F,  0.06F, 0.56F,
                                                     0.94F,  0.44F,  0.81F,  0.31F};
  const float threshold = kThresholds[static_cast<std::size_t>((y & 3) * 4 + (x & 3))];
  const auto channel = [threshold](float value) {
    return static_cast<std::uint32_t>(std::clamp(value + threshold, 0.0F, 255.0F));
  };
  return channel(color.r) << 16U | channel(color.g) << 8U | channel(color.b);
}

}  // namespace

/// Everything that depends on the hour alone.
struct Sea::Light {
  Color zenith, horizon, farWater, nearWater, glow;
  double lampX = 0.5;       ///< of the sun or the moon, as a part of the width
  double lampHeight = 0.5;  ///< 0 on the horizon, 1 at its highest
  bool isDay = true;
  float stars = 0;  ///< how clearly they show, 0 to 1
};

Sea::Light Sea::lightAt(double hour, bool isDim) {
  const auto next =
      std::find_if(kDay.begin() + 1, kDay.end() - 1, [hour](const auto& entry) { return hour < entry.hour; });
  const auto& before = *(next - 1);
  const auto part = static_cast<float>((hour - before.hour) / (next->hour - before.hour));
  Light light{mixed(before.zenith, next->zenith, part), mixed(before.horizon, next->horizon, part),
              mixed(before.farWater, next->farWater, part), mixed(before.nearWater, next->nearWater, part),
              mixed(before.glow, next->glow, part)};
  light.isDay = hour >= kSunrise && hour < kSunset;
  const double way = light.isDay ? progress(hour, kSunrise, kSunset) : progress(hour, kSunset, kSunrise);
  light.lampX = 0.14 + 0.72 * way;
  light.lampHeight = std::sin(way * kTurn / 2);
  light.stars = std::clamp(1.0F - (light.zenith.r + light.zenith.g + light.zenith.b) / 150.0F, 0.0F, 1.0F);
  if (isDim) {
    for (auto* color : {&light.zenith, &light.horizon, &light.farWater, &light.nearWater, &light.glow}) {
      *color = mixed(*color, rgb(0x060a14), 0.45F);
    }
  }
  return light;
}

Sea::Sea(nivlo::CGSize size) {
  const double scale = std::min(1.0, std::sqrt(kMostPixels / std::max(1.0, size.width * size.height)));
  width_ = std::max(2, static_cast<int>(size.width * scale));
  height_ = std::max(2, static_cast<int>(size.height * scale));
  horizon_ = height_ * 46 / 100;
}

void Sea::drawSky(const Light& light) {
  sky_.resize(static_cast<std::size_t>(width_) * static_cast<std::size_t>(horizon_));
  const auto unit = static_cast<float>(height_);
  const float lampX = static_cast<float>(light.lampX) * static_cast<float>(width_);
  const float lampY = static_cast<float>(horizon_) * (1.02F - 0.8F * static_cast<float>(light.lampHeight));
  const float radius = unit * (light.isDay ? 0.036F : 0.026F);
  const float reach = unit * (light.isDay ? 0.22F : 0.10F);
  for (int y = 0; y < horizon_; ++y) {
    const float down = static_cast<float>(y) / static_cast<float>(horizon_);
    const Color back = mixed(light.zenith, light.horizon, down * down * (1.6F - 0.6F * down));
    for (int x = 0; x < width_; ++x) {
      const float distance = std::hypot(static_cast<float>(x) - lampX, static_cast<float>(y) - lampY);
      Color color = plus(back, light.glow, 0.42F * std::exp(-distance / reach));
      const auto index = static_cast<std::uint32_t>(y * width_ + x);
      if (light.stars > 0 && scattered(index) > 0.9985F) {
        color = plus(color, rgb(0xffffff), light.stars * (1 - down) * 0.75F * scattered(index * 7 + 3));
      }
      color =
          mixed(color, plus(light.glow, rgb(0x303030), 1), std::clamp(radius - distance + 0.5F, 0.0F, 1.0F));
      sky_[index] = pixel(color, x, y);
    }
  }
}

std::vector<float> Sea::crestOf(int wave, double seconds) const {
  const float near = static_cast<float>(wave) / kWaves;
  const auto depth = static_cast<float>(height_ - horizon_);
  // Perspective: far waves are flat, short and close together.
  const float base = depth * 0.9F * std::pow(near, 1.7F);
  const float swell = wave == 0 ? 0 : depth * (0.006F + 0.035F * near);
  const double length = (0.10 + 0.55 * near) * height_;
  const double pace = (wave % 2 == 0 ? 1 : -0.8) * kTurn / (7 + 5 * near);
  std::vector<float> crest(static_cast<std::size_t>(width_));
  for (std::size_t x = 0; x < crest.size(); ++x) {
    const double at = static_cast<double>(x) / length * kTurn;
    const double height =
        std::sin(at + pace * seconds + wave * 1.9) + 0.45 * std::sin(at * 2.3 - pace * 1.4 * seconds + wave);
    crest[x] = base - swell * static_cast<float>(height);
  }
  return crest;
}

void Sea::drawWaves(const Light& light, double seconds, std::vector<std::uint32_t>& pixels) const {
  const auto depth = static_cast<float>(height_ - horizon_);
  const auto columns = static_cast<std::size_t>(width_);
  std::array<Color, kWaves + 1> colors;
  std::array<std::vector<float>, kWaves + 1> crests;
  for (int wave = 0; wave <= kWaves; ++wave) {
    const float near = static_cast<float>(wave) / kWaves;
    colors[static_cast<std::size_t>(wave)] = mixed(light.farWater, light.nearWater, std::pow(near, 0.75F));
    crests[static_cast<std::size_t>(wave)] = crestOf(wave, seconds);
  }
  const float lampX = static_cast<float>(light.lampX) * static_cast<float>(width_);
  const auto time = static_cast<float>(std::fmod(seconds, 1000 * kTurn));
  std::vector<std::uint8_t> nearest(columns,
                                    0);  // the foremost wave that reaches up to this row, for each column
  for (int row = 0; row < height_ - horizon_; ++row) {
    const auto at = static_cast<float>(row);
    const float near = at / depth;
    const float reach = static_cast<float>(height_) * (0.03F + 0.30F * near);  // half the reflection's width
    const float fineness = (1.9F - 1.5F * near) * 360.0F / static_cast<float>(height_);
    for (std::size_t x = 0; x < columns; ++x) {
      auto& wave = nearest[x];
      while (wave < kWaves && at >= crests[wave + 1U][x]) {
        ++wave;
      }
      const float below = at - crests[wave][x];
      Color color =
          mixed(colors[wave], light.horizon, 0.30F / (1.0F + below * 60.0F / static_cast<float>(height_)));
      if (wave > 0 && below < 0.5F) {
        color = mixed(colors[wave - 1U], color, below + 0.5F);
      }
      const float aside = std::abs(static_cast<float>(x) - lampX) / reach;
      if (aside < 1.0F) {
        const float bend = std::sin(static_cast<float>(x) * (0.16F - 0.1F * near) +
                                    static_cast<float>(wave) * 2.1F + time * 0.7F);
        const float ripple = std::sin(below * fineness + 1.8F * bend - time);
        color = plus(color, light.glow,
                     (1.0F - aside) * (1.0F - 0.6F * near) * std::max(0.0F, ripple - 0.2F) * 0.8F);
      }
      pixels[static_cast<std::size_t>(horizon_ + row) * columns + x] = pixel(color, static_cast<int>(x), row);
    }
  }
}

nivlo::VideoFramePtr Sea::draw(const Moment& moment) {
  const double wrapped = std::fmod(std::fmod(moment.hour, kHoursOfDay) + kHoursOfDay, kHoursOfDay);
  // The light of a minute: less than that no eye can tell.
  const double hour = std::floor(wrapped * 60) / 60;
  const Light light = lightAt(hour, moment.isDim);
  if (hour != skyHour_ || moment.isDim != skyIsDim_) {
    drawSky(light);
    skyHour_ = hour;
    skyIsDim_ = moment.isDim;
  }
  auto pixels = std::make_shared<std::vector<std::uint32_t>>(static_cast<std::size_t>(width_) *
                                                             static_cast<std::size_t>(height_));
  std::copy(sky_.begin(), sky_.end(), pixels->begin());
  drawWaves(light, moment.seconds, *pixels);
  auto frame = std::make_shared<nivlo::VideoFrame>();
  frame->format = nivlo::PixelFormat::BGRx;
  frame->width = width_;
  frame->height = height_;
  frame->planes[0] = {reinterpret_cast<const std::uint8_t*>(pixels->data()), width_ * 4};
  frame->captureTime = std::chrono::steady_clock::now();
  frame->storage = std::move(pixels);
  return frame;
}

}  // namespace tide
