#include "linux/camera/demo/BackScene.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace nivlo {
namespace {

using std::numbers::pi;
constexpr int kDeskTop = 520;

struct Pane {
  double x, y, width, height;
};
constexpr std::array kPanes{Pane{70, 0, 366, 478}, Pane{457, 0, 366, 478}, Pane{844, 0, 366, 478}};

struct Building {
  double x, top, width;
  int shade;
};
constexpr std::array kBuildings{
    Building{70, 340, 74, 0},   Building{150, 300, 58, 1},  Building{214, 366, 90, 0},
    Building{310, 318, 52, 1},  Building{368, 354, 96, 0},  Building{470, 282, 50, 1},
    Building{526, 344, 84, 0},  Building{616, 372, 70, 1},  Building{694, 330, 60, 0},
    Building{762, 378, 110, 1}, Building{880, 352, 64, 0},  Building{950, 392, 90, 1},
    Building{1046, 310, 56, 0}, Building{1108, 348, 102, 1}};
constexpr double kCityBottom = 478;
constexpr double kWindowStep = 15;

void drawWallAndSky(cairo_t* cairo) {
  setVerticalGradient(cairo, 0, kDeskTop, {{0, {0x221B38}}, {1, {0x3B2A45}}});
  cairo_paint(cairo);
  setVerticalGradient(
      cairo, 0, kCityBottom,
      {{0, {0x1B2456}}, {.38, {0x5A3C86}}, {.62, {0xC55C83}}, {.8, {0xFF9A6B}}, {1, {0xFFD08A}}});
  fillRectangle(cairo, 60, 0, 1160, kCityBottom);
  for (unsigned i = 0; i < 60; ++i) {
    setPaint(cairo, {0xFFFFFF, 0.15 + 0.5 * scatter(i + 500)});
    fillEllipse(cairo, {70 + 1140 * scatter(i), 190 * scatter(i + 100) * scatter(i + 900)}, 1.1, 1.1);
  }
  drawGlow(cairo, {935, 372}, 330, {0xFFE3A3, 0.85});
  setPaint(cairo, {0xFFF3CF});
  fillEllipse(cairo, {935, 372}, 40, 40);
}

void drawHills(cairo_t* cairo, double top, double swing, double phase, unsigned rgb) {
  cairo_move_to(cairo, 60, kCityBottom);
  for (int x = 60; x <= 1220; x += 10) {
    cairo_line_to(cairo, x,
                  top - swing * std::sin(x / 130.0 + phase) - swing * 0.5 * std::sin(x / 57.0 + 2 * phase));
  }
  cairo_line_to(cairo, 1220, kCityBottom);
  setPaint(cairo, {rgb});
  cairo_fill(cairo);
}

/// Calls `visit(x, y, index)` for each window of the city that is lit.
template <typename Visitor>
void forEachWindow(Visitor visit) {
  unsigned index = 0;
  for (const auto& building : kBuildings) {
    for (double y = building.top + 14; y < kCityBottom - 10; y += kWindowStep + 3) {
      for (double x = building.x + 9; x < building.x + building.width - 12; x += kWindowStep) {
        if (scatter(++index) < 0.42) {
          visit(x, y, index);
        }
      }
    }
  }
}

void drawCity(cairo_t* cairo) {
  drawHills(cairo, 352, 16, 0.4, 0x9C4A7B);
  drawHills(cairo, 386, 12, 2.1, 0x6A3670);
  for (const auto& building : kBuildings) {
    setVerticalGradient(
        cairo, building.top, kCityBottom,
        {{0, {building.shade ? 0x33234FU : 0x271C42U}}, {1, {building.shade ? 0x4A2C58U : 0x3A2450U}}});
    fillRectangle(cairo, building.x, building.top, building.width, kCityBottom - building.top);
  }
  forEachWindow([&](double x, double y, unsigned index) {
    setPaint(cairo, {scatter(index + 31) < 0.7 ? 0xFFCF87U : 0xFFE9C4U, 0.75});
    fillRectangle(cairo, x, y, 6, 8);
  });
}

void drawWindowFrame(cairo_t* cairo) {
  cairo_set_fill_rule(cairo, CAIRO_FILL_RULE_EVEN_ODD);
  cairo_rectangle(cairo, 46, -20, 1188, 512);
  for (const auto& pane : kPanes) {
    cairo_rectangle(cairo, pane.x, pane.y, pane.width, pane.height);
  }
  setVerticalGradient(cairo, 0, 500, {{0, {0x3D2A33}}, {1, {0x6B4636}}});
  cairo_fill(cairo);
  cairo_set_fill_rule(cairo, CAIRO_FILL_RULE_WINDING);
  for (const auto& pane : kPanes) {
    setPaint(cairo, {0xFFC890, 0.35});
    fillRectangle(cairo, pane.x, pane.height - 3, pane.width, 3);
    fillRectangle(cairo, pane.x + pane.width - 2, 0, 2, pane.height);
  }
  setVerticalGradient(cairo, 478, 516, {{0, {0xA8704A}}, {.25, {0x8A5A3E}}, {1, {0x4F3229}}});
  fillRectangle(cairo, 20, 484, 1240, 32);
}

void drawDesk(cairo_t* cairo) {
  setVerticalGradient(cairo, kDeskTop - 6, 720, {{0, {0xB9794B}}, {.06, {0xA2663F}}, {1, {0x55301F}}});
  fillRectangle(cairo, 0, kDeskTop - 6, 1280, 206);
  cairo_set_line_width(cairo, 1.5);
  for (int i = 0; i < 7; ++i) {
    const double y = kDeskTop + 6 + i * i * 5.2;
    setPaint(cairo, {0x2C160C, 0.22});
    cairo_move_to(cairo, 0, y);
    cairo_curve_to(cairo, 400, y + 6 * std::sin(i), 850, y - 7 * std::cos(i * 2), 1280, y + 3);
    cairo_stroke(cairo);
  }
  cairo_save(cairo);
  cairo_rectangle(cairo, 0, kDeskTop - 6, 1280, 206);
  cairo_clip(cairo);
  cairo_translate(cairo, 935, kDeskTop);
  cairo_scale(cairo, 1, 0.36);
  drawGlow(cairo, {0, 0}, 420, {0xFFC27A, 0.6});
  cairo_restore(cairo);
}

void drawBooks(cairo_t* cairo) {
  struct Book {
    double x, y, width, height;
    unsigned rgb;
  };
  constexpr Book books[] = {
      {52, 610, 236, 36, 0x2B5D73}, {70, 576, 204, 34, 0xD9734E}, {60, 546, 190, 30, 0xE7C36A}};
  setPaint(cairo, {0x1A0C08, 0.35});
  fillEllipse(cairo, {172, 648}, 140, 12);
  for (const auto& book : books) {
    setPaint(cairo, {book.rgb});
    fillRounded(cairo, book.x, book.y, book.width, book.height, 5);
    setPaint(cairo, {0xFFFFFF, 0.25});
    fillRectangle(cairo, book.x + 22, book.y + 4, 5, book.height - 8);
    fillRectangle(cairo, book.x + 34, book.y + 4, 3, book.height - 8);
    setPaint(cairo, {0x000000, 0.18});
    fillRectangle(cairo, book.x + 3, book.y + book.height - 6, book.width - 6, 5);
  }
}

void drawPot(cairo_t* cairo) {
  setVerticalGradient(cairo, 470, 548, {{0, {0xE8A17C}}, {1, {0xB5603F}}});
  fillPolygon(cairo, {{112, 482}, {202, 482}, {190, 547}, {124, 547}});
  setPaint(cairo, {0xF0B591});
  fillRounded(cairo, 105, 468, 104, 20, 6);
}

void drawLamp(cairo_t* cairo) {
  drawGlow(cairo, {1122, 420}, 250, {0xFFD58A, 0.42});
  setPaint(cairo, {0x1A0C08, 0.35});
  fillEllipse(cairo, {1180, 652}, 76, 11);
  setPaint(cairo, {0x23303B});
  fillRounded(cairo, 1118, 634, 124, 16, 8);
  cairo_set_line_width(cairo, 9);
  cairo_set_line_join(cairo, CAIRO_LINE_JOIN_ROUND);
  cairo_move_to(cairo, 1190, 636);
  cairo_line_to(cairo, 1226, 474);
  cairo_line_to(cairo, 1152, 356);
  cairo_stroke(cairo);
  setPaint(cairo, {0xFFF0C2});
  fillEllipse(cairo, {1114, 394}, 30, 18);
  setVerticalGradient(cairo, 316, 410, {{0, {0xF2C14E}}, {1, {0xD9902F}}});
  fillPolygon(cairo, {{1140, 330}, {1172, 346}, {1166, 412}, {1066, 378}});
}

void drawMug(cairo_t* cairo) {
  setPaint(cairo, {0x1A0C08, 0.35});
  fillEllipse(cairo, {1042, 650}, 66, 10);
  cairo_set_line_width(cairo, 11);
  setPaint(cairo, {0xDDE8EA});
  cairo_arc(cairo, 1090, 602, 22, -pi / 2, pi / 2);
  cairo_stroke(cairo);
  setVerticalGradient(cairo, 560, 650, {{0, {0xF6FAFA}}, {1, {0xB9C9CE}}});
  fillRounded(cairo, 992, 562, 98, 88, 16);
  setPaint(cairo, {0x4A2A1A});
  fillEllipse(cairo, {1041, 566}, 43, 8);
  setPaint(cairo, {0xE4572E});
  fillRectangle(cairo, 992, 606, 98, 10);
}

/// Returns where a bulb of the string of lights hangs at a moment.
Point bulbAt(int index, double seconds) {
  const double x = 20 + index * 103.0;
  const double along = std::fmod(x, 430) / 430;
  return {x + 2.5 * std::sin(seconds * 1.1 + index), 34 + 52 * 4 * along * (1 - along)};
}

void drawLightString(cairo_t* cairo) {
  cairo_set_line_width(cairo, 2);
  setPaint(cairo, {0x120D1C, 0.85});
  for (int x = -10; x <= 1290; x += 5) {
    const double along = std::fmod(x + 430, 430) / 430;
    cairo_line_to(cairo, x, 26 + 52 * 4 * along * (1 - along));
  }
  cairo_stroke(cairo);
}

void drawLeaves(cairo_t* cairo, double seconds) {
  constexpr int count = 9;
  for (int i = 0; i < count; ++i) {
    const double lean = (i - (count - 1) / 2.0) * 0.27;
    const double angle = lean + 0.045 * std::sin(seconds * 1.3 + i * 0.9);
    const double length = 150 - 9 * std::abs(i - 4) + 16 * scatter(i);
    cairo_save(cairo);
    cairo_translate(cairo, 157 + (i - 4) * 5, 470);
    cairo_rotate(cairo, angle);
    cairo_move_to(cairo, 0, 0);
    cairo_curve_to(cairo, -28, -length * .4, -18, -length * .8, 0, -length);
    cairo_curve_to(cairo, 18, -length * .8, 28, -length * .4, 0, 0);
    setPaint(cairo, {i % 2 ? 0x2F7D5BU : 0x3F9A6AU});
    cairo_fill(cairo);
    cairo_restore(cairo);
  }
}

void drawSteam(cairo_t* cairo, double seconds) {
  cairo_set_line_cap(cairo, CAIRO_LINE_CAP_ROUND);
  cairo_set_line_width(cairo, 9);
  for (int wisp = 0; wisp < 3; ++wisp) {
    const double rise = std::fmod(seconds * 0.24 + wisp / 3.0, 1.0);
    const double x = 1020 + wisp * 20;
    const double y = 556 - rise * 80;
    const double sway = 16 * std::sin(seconds * 1.4 + wisp * 2.1);
    setPaint(cairo, {0xFFF4E4, 0.22 * std::sin(pi * rise)});
    cairo_move_to(cairo, x, y);
    cairo_curve_to(cairo, x + sway, y - 24, x - sway, y - 44, x, y - 70);
    cairo_stroke(cairo);
  }
}

void drawTwinkle(cairo_t* cairo, double seconds) {
  constexpr double besideLamp = 1040;
  forEachWindow([&](double x, double y, unsigned index) {
    if (x > besideLamp || scatter(index + 77) > 0.22) {
      return;
    }
    const double wave = std::sin(seconds * (0.5 + scatter(index)) + index);
    setPaint(cairo, {0x2B1E46, smoothStep(0.1, 0.5, wave) * 0.85});
    cairo_rectangle(cairo, x, y, 6, 8);
    cairo_fill(cairo);
  });
}

void drawAeroplane(cairo_t* cairo, double seconds) {
  const double x = 1230 - std::fmod(seconds * 34, 1500);
  const double y = 128 + (1230 - x) * 0.035;
  setPaint(cairo, {0xF7E8FF, 0.35});
  fillRectangle(cairo, x + 6, y - 0.75, 70, 1.5);
  setPaint(cairo, {0xFFFFFF, 0.9});
  fillEllipse(cairo, {x, y}, 2.4, 2.4);
  if (std::fmod(seconds, 1.2) < 0.25) {
    drawGlow(cairo, {x, y}, 12, {0xFF5A5A, 1});
  }
}

}  // namespace

BackScene::BackScene()
    : room_(makeLayer(kSceneWidth, kSceneHeight)), bulbGlow_(makeLayer(64, 64)), cards_(drawCodeCards()) {
  const auto cairo = drawOn(room_);
  drawWallAndSky(cairo.get());
  drawCity(cairo.get());
  drawWindowFrame(cairo.get());
  drawDesk(cairo.get());
  drawBooks(cairo.get());
  drawPot(cairo.get());
  drawMug(cairo.get());
  drawLamp(cairo.get());
  drawLightString(cairo.get());
  drawGlow(drawOn(bulbGlow_).get(), {32, 32}, 32, {0xFFD98A, 0.9});
  for (const int width : {300, 220, 380}) {
    clouds_.push_back(drawCloud(width, {0xF7B7B0, 0.55}, {0xB0578C, 0.30}));
  }
}

void BackScene::drawSky(cairo_t* cairo, double seconds) const {
  cairo_save(cairo);
  for (const auto& pane : kPanes) {
    cairo_rectangle(cairo, pane.x, pane.y, pane.width, pane.height);
  }
  cairo_clip(cairo);
  drawAeroplane(cairo, seconds);
  for (std::size_t i = 0; i < clouds_.size(); ++i) {
    const double x =
        std::fmod(seconds * (16 + 5.0 * static_cast<double>(i)) + 520.0 * static_cast<double>(i), 1600);
    paintLayer(cairo, clouds_[i], {x - 380, 120 + 40 * std::fmod(static_cast<double>(i) * 1.7, 2)});
  }
  drawTwinkle(cairo, seconds);
  cairo_restore(cairo);
}

void BackScene::drawCard(cairo_t* cairo, double seconds) const {
  constexpr double appears = 0.5, stays = 4, moves = 0.45;
  const double local = std::fmod(seconds, kCardPeriod) - appears;
  if (local < 0 || local > stays) {
    return;
  }
  const auto& card = cards_[static_cast<std::size_t>(seconds / kCardPeriod) % cards_.size()];
  const double shown = smoothStep(0, moves, local) * smoothStep(stays, stays - moves, local);
  const double x = kSceneWidth / 2.0 + 20 * std::sin(local * 1.15 - 1.6);
  const double y = kSceneHeight / 2.0 + 16 + 8 * std::sin(local * 1.9) + (1 - shown) * 620;
  cairo_save(cairo);
  cairo_translate(cairo, x, y);
  // The card moves nearer and further but is not tilted, because pixman scales several times faster than it
  // rotates.
  const double size = 1 + 0.015 * std::sin(local * 1.4 + 0.6);
  cairo_scale(cairo, size, size);
  cairo_set_source_surface(cairo, card.picture.get(), -card.codeCenter.x, -card.codeCenter.y);
  cairo_pattern_set_filter(cairo_get_source(cairo), CAIRO_FILTER_BILINEAR);
  cairo_paint(cairo);
  cairo_restore(cairo);
}

void BackScene::draw(cairo_t* cairo, double seconds) const {
  cairo_set_operator(cairo, CAIRO_OPERATOR_SOURCE);
  paintLayer(cairo, room_, {0, 0});
  cairo_set_operator(cairo, CAIRO_OPERATOR_OVER);
  drawSky(cairo, seconds);
  drawLeaves(cairo, seconds);
  drawSteam(cairo, seconds);
  for (int i = 0; i < 13; ++i) {
    const auto bulb = bulbAt(i, seconds);
    paintLayer(cairo, bulbGlow_, {bulb.x - 32, bulb.y - 32}, 0.55 + 0.4 * std::sin(seconds * 2 + i * 1.9));
    setPaint(cairo, {0xFFF3D0});
    fillEllipse(cairo, bulb, 5, 7);
  }
  drawCard(cairo, seconds);
}

}  // namespace nivlo
