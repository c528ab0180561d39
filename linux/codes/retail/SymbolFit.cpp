#include "linux/codes/retail/SymbolFit.hpp"

#include <algorithm>
#include <cmath>

namespace nivlo {

namespace {

// Less than is asked for beside a symbol, as print often comes too close.
constexpr int kQuietModules = 4;
// A symbol fills about this part of the row or more.
constexpr float kLeastShareOfRow = 0.3F;
constexpr float kLeastPixelsOfModule = 1;
constexpr std::size_t kMostFits = 5;
constexpr float kLeastScore = 0.6F;
// In modules.
constexpr float kFirstStep = 0.5F;
constexpr float kLastStep = 0.1F;
constexpr float kStepFactor = 0.6F;
constexpr float kBulgeStep = 0.7F;
constexpr int kBulges = 3;
constexpr float kMostBulge = 4;

struct Edge {
  float place;
  float quiet;  ///< pixels of light beside it
};

struct Edges {
  std::vector<Edge> toDark;
  std::vector<Edge> toLight;
};

Edges edgesOf(const BarProfile& profile) {
  Edges edges;
  const std::vector<float>& dark = profile.darknesses();
  float last = -HUGE_VALF;
  for (int x = 1; x < profile.width(); ++x) {
    if ((dark[x - 1] < 0) == (dark[x] < 0)) {
      continue;
    }
    const float place = static_cast<float>(x) - 0.5F + dark[x - 1] / (dark[x - 1] - dark[x]);
    if (dark[x] < 0) {
      edges.toLight.push_back({place, HUGE_VALF});
    } else {
      if (!edges.toLight.empty()) {
        edges.toLight.back().quiet = place - last;
      }
      edges.toDark.push_back({place, place - last});
    }
    last = place;
  }
  return edges;
}

/// A module that is the same in all symbols of a kind.
struct KnownModule {
  float part;  ///< of the symbol's length where its centre is
  float sign;  ///< 1 for a dark one, -1 for a light one
};

std::vector<KnownModule> knownModules(const RetailSymbol& symbol) {
  const std::string quiet(kQuietModules, '0');
  const std::string modules = quiet + symbol.modules + quiet;
  std::vector<KnownModule> known;
  for (std::size_t i = 0; i < modules.size(); ++i) {
    if (modules[i] == '?') {
      continue;
    }
    const float centre = static_cast<float>(i) + 0.5F - kQuietModules;
    known.push_back({centre / static_cast<float>(symbol.modules.size()), modules[i] == '1' ? 1.0F : -1.0F});
  }
  return known;
}

using Darkness = float (BarProfile::*)(float) const;

template <Darkness darknessAt>
float correlation(const BarProfile& profile, const std::vector<KnownModule>& known, const SymbolFit& fit) {
  float sum = 0, squares = 0, product = 0, signs = 0;
  for (const auto& [part, sign] : known) {
    const float darkness = (profile.*darknessAt)(fit.at(part));
    sum += darkness;
    squares += darkness * darkness;
    product += darkness * sign;
    signs += sign;
  }
  const auto count = static_cast<float>(known.size());
  const float variance = (squares - sum * sum / count) * (count - signs * signs / count);
  return (product - sum * signs / count) / std::sqrt(std::max(1e-3F, variance));
}

SymbolFit firstFit(const BarProfile& profile, const std::vector<KnownModule>& known, float start, float end,
                   float module) {
  SymbolFit best;
  for (int i = -kBulges; i <= kBulges; ++i) {
    SymbolFit fit{start, end, static_cast<float>(i) * kBulgeStep * module};
    fit.score = correlation<&BarProfile::darknessNear>(profile, known, fit);
    if (fit.score > best.score) {
      best = fit;
    }
  }
  return best;
}

void refine(const BarProfile& profile, const std::vector<KnownModule>& known, float module, SymbolFit& fit) {
  fit.score = correlation<&BarProfile::darkness>(profile, known, fit);
  for (float step = kFirstStep * module; step > kLastStep * module; step *= kStepFactor) {
    for (bool better = true; better;) {
      better = false;
      for (float SymbolFit::*part : {&SymbolFit::start, &SymbolFit::end, &SymbolFit::bulge}) {
        for (const float by : {-step, step}) {
          SymbolFit moved = fit;
          moved.*part += by;
          moved.score = correlation<&BarProfile::darkness>(profile, known, moved);
          if (moved.score <= fit.score || std::abs(moved.bulge) > kMostBulge * module) {
            continue;
          }
          fit = moved;
          better = true;
        }
      }
    }
  }
}

bool isHigher(const SymbolFit& first, const SymbolFit& second) { return first.score > second.score; }

}  // namespace

std::vector<SymbolFit> findFits(const BarProfile& profile, const RetailSymbol& symbol) {
  const std::vector<KnownModule> known = knownModules(symbol);
  const auto modules = static_cast<float>(symbol.modules.size());
  const float least =
      std::max(modules * kLeastPixelsOfModule, static_cast<float>(profile.width()) * kLeastShareOfRow);
  const Edges edges = edgesOf(profile);
  std::vector<SymbolFit> fits;
  for (const Edge& left : edges.toDark) {
    for (const Edge& right : edges.toLight) {
      const float module = (right.place - left.place) / modules;
      if (module * modules < least || std::min(left.quiet, right.quiet) < kQuietModules * module) {
        continue;
      }
      fits.push_back(firstFit(profile, known, left.place, right.place, module));
      if (!symbol.isSymmetrical) {
        fits.push_back(firstFit(profile, known, right.place, left.place, module));
      }
    }
  }
  const std::size_t count = std::min(kMostFits, fits.size());
  std::partial_sort(fits.begin(), fits.begin() + static_cast<std::ptrdiff_t>(count), fits.end(), isHigher);
  fits.resize(count);
  for (SymbolFit& fit : fits) {
    refine(profile, known, std::abs(fit.end - fit.start) / modules, fit);
  }
  std::erase_if(fits, [](const SymbolFit& fit) { return fit.score < kLeastScore; });
  return fits;
}

}  // namespace nivlo
