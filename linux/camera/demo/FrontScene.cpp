#include "linux/camera/demo/FrontScene.hpp"

#include <array>
#include <cmath>
#include <numbers>

namespace nivlo {
namespace {

using std::numbers::pi;
constexpr unsigned kSkin = 0xF2BE98;
constexpr unsigned kSkinShade = 0xDE9C78;
constexpr unsigned kHairColor = 0x4B2B2A;
constexpr double kShore = 470;
// The chin, in the layers of the head. The head is placed and moved by it.
constexpr Point kHeadPivot{210, 380};

void drawSky(cairo_t* cairo) {
  setVerticalGradient(cairo, 0, kShore, {{0, {0x4FB7EC}}, {.6, {0xA9E1F7}}, {1, {0xF4FBEF}}});
  cairo_paint(cairo);
  drawGlow(cairo, {1070, 110}, 260, {0xFFF6C8, 0.95});
  setPaint(cairo, {0xFFF9DC});
  fillEllipse(cairo, {1070, 110}, 52, 52);
}

void drawMountain(cairo_t* cairo, Point peak, double halfWidth, unsigned rgb, unsigned shade) {
  setPaint(cairo, {rgb});
  fillPolygon(cairo, {{peak.x - halfWidth, kShore}, peak, {peak.x + halfWidth, kShore}});
  setPaint(cairo, {shade});
  fillPolygon(
      cairo,
      {peak, {peak.x + halfWidth, kShore}, {peak.x + halfWidth * .18, kShore}, {peak.x - 14, peak.y + 120}});
  setPaint(cairo, {0xFFFFFF, 0.92});
  const double slope = halfWidth / (kShore - peak.y);
  fillPolygon(cairo, {peak,
                      {peak.x + 66 * slope, peak.y + 66},
                      {peak.x + 26 * slope, peak.y + 50},
                      {peak.x + 4, peak.y + 84},
                      {peak.x - 24 * slope, peak.y + 54},
                      {peak.x - 70 * slope, peak.y + 70}});
}

void drawMeadow(cairo_t* cairo, double top, double swing, double phase, unsigned light, unsigned dark) {
  cairo_move_to(cairo, 0, kSceneHeight);
  for (int x = 0; x <= kSceneWidth; x += 20) {
    cairo_line_to(cairo, x, top + swing * std::sin(x / 260.0 + phase));
  }
  cairo_line_to(cairo, kSceneWidth, kSceneHeight);
  setVerticalGradient(cairo, top - swing, kSceneHeight, {{0, {light}}, {1, {dark}}});
  cairo_fill(cairo);
}

void drawTree(cairo_t* cairo, double x, double foot, double size, unsigned rgb) {
  setPaint(cairo, {0x6B4A32});
  fillRectangle(cairo, x - size * .05, foot - size * .25, size * .1, size * .25);
  setPaint(cairo, {rgb});
  for (int tier = 0; tier < 3; ++tier) {
    const double base = foot - size * (.18 + .24 * tier);
    const double half = size * (.32 - .07 * tier);
    fillPolygon(cairo, {{x - half, base}, {x, base - size * .42}, {x + half, base}});
  }
}

void drawLandscape(cairo_t* cairo) {
  drawSky(cairo);
  drawMountain(cairo, {250, 170}, 330, 0x6FA8B8, 0x5A90A6);
  drawMountain(cairo, {980, 205}, 340, 0x7FB4BE, 0x659DAF);
  drawMountain(cairo, {560, 240}, 280, 0x8DC0C6, 0x74A9B6);
  setVerticalGradient(cairo, kShore - 40, 600, {{0, {0x9FDDE6}}, {.4, {0x4FB3CF}}, {1, {0x2E8FB8}}});
  fillRectangle(cairo, 0, kShore - 34, kSceneWidth, 200);
  drawMeadow(cairo, 560, 26, 0.6, 0x9BD36A, 0x4E9A48);
  for (unsigned i = 0; i < 9; ++i) {
    const double x = i < 5 ? 30 + 74.0 * i : 960 + 78.0 * (i - 5);
    drawTree(cairo, x, 582 + 26 * scatter(i), 130 + 70 * scatter(i + 40), i % 2 ? 0x2F8F5BU : 0x3FA56AU);
  }
  drawMeadow(cairo, 630, 18, 2.4, 0x7CC257, 0x3B8141);
  for (unsigned i = 0; i < 70; ++i) {
    constexpr std::array<unsigned, 4> petals{0xFFFFFF, 0xFFD84D, 0xFF8FA3, 0xFFFFFF};
    setPaint(cairo, {petals[i % petals.size()], 0.9});
    fillEllipse(cairo, {1280 * scatter(i + 300), 650 + 66 * scatter(i + 600)}, 3.2, 3.2);
  }
}

Layer drawBalloon(unsigned rgb, unsigned stripe) {
  auto layer = makeLayer(100, 150);
  const auto owner = drawOn(layer);
  cairo_t* cairo = owner.get();
  cairo_set_line_width(cairo, 1.5);
  setPaint(cairo, {0x6B4A32});
  for (const double x : {-14.0, 14.0}) {
    cairo_move_to(cairo, 50 + x * 2, 84);
    cairo_line_to(cairo, 50 + x * .7, 124);
    cairo_stroke(cairo);
  }
  setPaint(cairo, {0x8A5A3E});
  fillRounded(cairo, 38, 122, 24, 18, 4);
  setPaint(cairo, {rgb});
  fillEllipse(cairo, {50, 50}, 44, 48);
  setPaint(cairo, {stripe});
  fillEllipse(cairo, {50, 50}, 26, 48);
  setPaint(cairo, {rgb});
  fillEllipse(cairo, {50, 50}, 10, 48);
  setPaint(cairo, {0xFFFFFF, 0.25});
  fillEllipse(cairo, {34, 34}, 12, 18);
  return layer;
}

void drawBody(cairo_t* cairo) {
  setPaint(cairo, {kSkinShade});
  fillRounded(cairo, 250, 0, 100, 150, 30);
  cairo_move_to(cairo, 0, 320);
  cairo_curve_to(cairo, 10, 150, 90, 96, 240, 70);
  cairo_curve_to(cairo, 270, 128, 330, 128, 360, 70);
  cairo_curve_to(cairo, 510, 96, 590, 150, 600, 320);
  setVerticalGradient(cairo, 60, 320, {{0, {0xFF7B5F}}, {1, {0xE2553F}}});
  cairo_fill(cairo);
  cairo_set_line_width(cairo, 14);
  setPaint(cairo, {0xFFD9A0});
  cairo_move_to(cairo, 240, 72);
  cairo_curve_to(cairo, 268, 138, 332, 138, 360, 72);
  cairo_stroke(cairo);
  for (const double y : {208.0, 250.0}) {
    setPaint(cairo, {0xFFD9A0, 0.85});
    fillRectangle(cairo, 110, y, 380, 12);
  }
}

void drawBackHair(cairo_t* cairo) {
  setPaint(cairo, {kHairColor});
  fillEllipse(cairo, {210, 62}, 58, 54);
  fillEllipse(cairo, {210, 214}, 146, 152);
  fillRounded(cairo, 66, 214, 288, 176, 80);
}

void drawHead(cairo_t* cairo) {
  setPaint(cairo, {kSkinShade});
  fillEllipse(cairo, {91, 244}, 22, 30);
  fillEllipse(cairo, {329, 244}, 22, 30);
  setVerticalGradient(cairo, 90, 380, {{0, {0xF8CBA6}}, {1, {kSkin}}});
  cairo_move_to(cairo, 92, 210);
  cairo_curve_to(cairo, 92, 60, 328, 60, 328, 210);
  cairo_curve_to(cairo, 328, 320, 274, 378, 210, 378);
  cairo_curve_to(cairo, 146, 378, 92, 320, 92, 210);
  cairo_fill(cairo);
  setPaint(cairo, {0xF2836B, 0.35});
  fillEllipse(cairo, {134, 286}, 28, 18);
  fillEllipse(cairo, {286, 286}, 28, 18);
  setPaint(cairo, {kHairColor});
  cairo_move_to(cairo, 82, 236);
  cairo_curve_to(cairo, 70, 26, 350, 26, 338, 236);
  cairo_curve_to(cairo, 326, 186, 300, 146, 262, 122);
  cairo_curve_to(cairo, 222, 154, 152, 150, 112, 174);
  cairo_curve_to(cairo, 96, 190, 90, 212, 82, 236);
  cairo_fill(cairo);
  cairo_set_line_width(cairo, 5);
  cairo_set_line_cap(cairo, CAIRO_LINE_CAP_ROUND);
  setPaint(cairo, {kSkinShade});
  cairo_move_to(cairo, 208, 252);
  cairo_curve_to(cairo, 198, 282, 204, 288, 220, 286);
  cairo_stroke(cairo);
}

/// Returns how far the eyes are shut, from 0 to 1.
double blinkAt(double seconds) {
  const double local = std::fmod(seconds, 3.7) - 2.2;
  return smoothStep(0, 0.09, local) * smoothStep(0.24, 0.13, local);
}

void drawEyes(cairo_t* cairo, double seconds) {
  const double open = 1 - 0.92 * blinkAt(seconds);
  const double lookX = 5 * std::sin(seconds * 0.7) * smoothStep(-0.2, 0.6, std::sin(seconds * 0.31));
  for (const double x : {158.0, 262.0}) {
    setPaint(cairo, {0xFFFFFF});
    fillEllipse(cairo, {x, 234}, 21, 19 * open);
    setPaint(cairo, {0x2E4A3F});
    fillEllipse(cairo, {x + lookX, 235}, 11.5, 12.5 * open);
    setPaint(cairo, {0x10181A});
    fillEllipse(cairo, {x + lookX, 235}, 6, 6.5 * open);
    setPaint(cairo, {0xFFFFFF, 0.95 * open});
    fillEllipse(cairo, {x + lookX + 4, 230}, 3.2, 3.2 * open);
  }
  cairo_set_line_width(cairo, 6);
  setPaint(cairo, {0x2B3A55});
  for (const double x : {158.0, 262.0}) {
    cairo_new_sub_path(cairo);
    cairo_arc(cairo, x, 236, 42, 0, 2 * pi);
  }
  cairo_move_to(cairo, 200, 230);
  cairo_curve_to(cairo, 206, 224, 214, 224, 220, 230);
  cairo_stroke(cairo);
}

void drawExpression(cairo_t* cairo, double seconds) {
  const double joy = smoothStep(-0.3, 0.8, std::sin(seconds * 2 * pi / 9 - 1.0));
  cairo_set_line_width(cairo, 9);
  cairo_set_line_cap(cairo, CAIRO_LINE_CAP_ROUND);
  setPaint(cairo, {kHairColor});
  for (const double mirror : {-1.0, 1.0}) {
    cairo_move_to(cairo, 210 + mirror * 78, 188 - 5 * joy);
    cairo_curve_to(cairo, 210 + mirror * 64, 177 - 8 * joy, 210 + mirror * 44, 177 - 8 * joy,
                   210 + mirror * 32, 186 - 5 * joy);
    cairo_stroke(cairo);
  }
  const double width = 42 + 10 * joy;
  const double depth = 16 + 24 * joy;
  cairo_move_to(cairo, 210 - width, 312);
  cairo_curve_to(cairo, 210 - width * .6, 312 + depth * 1.35, 210 + width * .6, 312 + depth * 1.35,
                 210 + width, 312);
  cairo_curve_to(cairo, 210 + width * .5, 318 + depth * .2, 210 - width * .5, 318 + depth * .2, 210 - width,
                 312);
  setPaint(cairo, {0xA63A3A});
  cairo_fill_preserve(cairo);
  cairo_set_line_width(cairo, 4);
  cairo_stroke(cairo);
}

/// Draws a hand at the end of a sleeve, with the wrist at the origin.
void drawHand(cairo_t* cairo) {
  cairo_set_line_cap(cairo, CAIRO_LINE_CAP_ROUND);
  setPaint(cairo, {0xE2553F});
  cairo_set_line_width(cairo, 74);
  cairo_move_to(cairo, 40, 240);
  cairo_line_to(cairo, 4, 44);
  cairo_stroke(cairo);
  setPaint(cairo, {kSkin});
  cairo_set_line_width(cairo, 23);
  constexpr Point tips[] = {{-40, -104}, {-14, -122}, {14, -118}, {38, -98}, {66, -46}};
  for (const auto& tip : tips) {
    cairo_move_to(cairo, tip.x * .45, -34 + (tip.x > 50 ? 20 : 0));
    cairo_line_to(cairo, tip.x, tip.y);
    cairo_stroke(cairo);
  }
  fillEllipse(cairo, {2, -26}, 44, 46);
  fillRounded(cairo, -24, -10, 52, 50, 18);
  setPaint(cairo, {0xFFD9A0});
  cairo_set_line_width(cairo, 14);
  cairo_move_to(cairo, -32, 22);
  cairo_line_to(cairo, 34, 14);
  cairo_stroke(cairo);
}

void drawBird(cairo_t* cairo, Point at, double flap) {
  cairo_set_line_width(cairo, 3);
  cairo_set_line_cap(cairo, CAIRO_LINE_CAP_ROUND);
  setPaint(cairo, {0x2B4A5F});
  cairo_move_to(cairo, at.x - 16, at.y - 9 * flap);
  cairo_curve_to(cairo, at.x - 8, at.y - 11 * flap, at.x - 3, at.y - 3, at.x, at.y);
  cairo_curve_to(cairo, at.x + 3, at.y - 3, at.x + 8, at.y - 11 * flap, at.x + 16, at.y - 9 * flap);
  cairo_stroke(cairo);
}

/// Draws them on the open water between the trees.
void drawRipples(cairo_t* cairo, double seconds) {
  cairo_save(cairo);
  cairo_rectangle(cairo, 385, kShore - 30, 505, 90);
  cairo_clip(cairo);
  for (unsigned i = 0; i < 26; ++i) {
    const double x = std::fmod(1400 * scatter(i + 50) + seconds * (6 + 8 * scatter(i)), 1400) - 60;
    const double y = 446 + 84 * scatter(i + 90);
    setPaint(cairo, {0xFFFFFF, 0.28 + 0.22 * std::sin(seconds * 1.5 + i)});
    fillRectangle(cairo, x, y, 26 + 40 * scatter(i + 9), 2);
  }
  cairo_restore(cairo);
}

}  // namespace

FrontScene::FrontScene()
    : landscape_(makeLayer(kSceneWidth, kSceneHeight)),
      body_(makeLayer(600, 320)),
      hair_(makeLayer(420, 400)),
      head_(makeLayer(420, 400)) {
  drawLandscape(drawOn(landscape_).get());
  drawBody(drawOn(body_).get());
  drawBackHair(drawOn(hair_).get());
  drawHead(drawOn(head_).get());
  for (const int width : {340, 240, 420}) {
    clouds_.push_back(drawCloud(width, {0xFFFFFF, 0.95}, {0xDCEFF8, 0.85}));
  }
  balloons_.push_back(drawBalloon(0xFF6B57, 0xFFD166));
  balloons_.push_back(drawBalloon(0x7A5CFA, 0xF9F3FF));
}

void FrontScene::drawAir(cairo_t* cairo, double seconds) const {
  for (std::size_t i = 0; i < clouds_.size(); ++i) {
    const double order = static_cast<double>(i);
    const double x = std::fmod(seconds * (20 + 6 * order) + 640 * order + 500, 1760) - 440;
    paintLayer(cairo, clouds_[i], {x, 24 + 62 * std::fmod(order * 1.6, 2)});
  }
  for (std::size_t i = 0; i < balloons_.size(); ++i) {
    const double order = static_cast<double>(i);
    const double x = 150 + 800 * order + 40 * std::sin(seconds * 0.12 + order);
    paintLayer(cairo, balloons_[i], {x, 130 + 70 * order + 14 * std::sin(seconds * 0.5 + 2 * order)});
  }
  for (int i = 0; i < 4; ++i) {
    const double x = std::fmod(seconds * 48 + i * 34, 1500) - 100;
    drawBird(cairo, {x, 120 + 18.0 * (i % 3) + 10 * std::sin(seconds + i)}, std::sin(seconds * 7 + i));
  }
}

void FrontScene::drawPerson(cairo_t* cairo, double seconds) const {
  const double breath = 3 * std::sin(seconds * 1.6);
  const Point chin{640 + 9 * std::sin(seconds * 0.8), 470 + breath + 4 * std::sin(seconds * 1.1)};
  const Point headCorner{std::round(chin.x - kHeadPivot.x), std::round(chin.y - kHeadPivot.y)};
  paintLayer(cairo, hair_, headCorner);
  paintLayer(cairo, body_, {340, 440 + breath});
  paintLayer(cairo, head_, headCorner);
  cairo_save(cairo);
  cairo_translate(cairo, headCorner.x, headCorner.y);
  drawEyes(cairo, seconds);
  drawExpression(cairo, seconds);
  cairo_restore(cairo);
}

void FrontScene::draw(cairo_t* cairo, double seconds) const {
  cairo_set_operator(cairo, CAIRO_OPERATOR_SOURCE);
  paintLayer(cairo, landscape_, {0, 0});
  cairo_set_operator(cairo, CAIRO_OPERATOR_OVER);
  drawAir(cairo, seconds);
  drawRipples(cairo, seconds);
  drawPerson(cairo, seconds);
  constexpr double wavePeriod = 9;
  const double local = std::fmod(seconds, wavePeriod) - 2;
  const double raised = smoothStep(0, 0.6, local) * smoothStep(4.2, 3.6, local);
  if (raised <= 0) {
    return;
  }
  cairo_save(cairo);
  cairo_translate(cairo, 980, 500 + (1 - raised) * 360);
  cairo_rotate(cairo, 0.12 + 0.26 * std::sin(local * 7.5));
  drawHand(cairo);
  cairo_restore(cairo);
}

}  // namespace nivlo
