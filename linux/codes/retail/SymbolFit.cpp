#include "linux/codes/retail/SymbolFit.hpp"

#include <algorithm>
#include <cmath>

namespace nivlo {

namespace {

// Modules. Less than the standard asks for, because print often intrudes into quiet zones.
constexpr int kQuietZone = 4;
// The smallest symbol that is looked for, as a fraction of the row's width and in pixels per module.
constexpr float kMinShareOfRow = 0.3F;
constexpr float kMinPixelsPerModule = 1;
constexpr std::size_t kMaxFits = 5;
constexpr float kMinScore = 0.6F;
// A fit is refined in steps that shrink by kStepFactor, from the first to the last, in modules.
constexpr float kFirstStep = 0.5F;
constexpr float kLastStep = 0.1F;
constexpr float kStepFactor = 0.6F;
// Before that, bulges of up to kBulgeSteps steps to either side are tried; refining may go up to kMaxBulge.
// In modules.
constexpr float kBulgeStep = 0.7F;
constexpr int kBulgeSteps = 3;
constexpr float kMaxBulge = 4;

struct Edge {
  float place;
  float quiet;  ///< width in pixels of the light on its light side, infinite at the ends of the row
};

/// Left to right.
struct Edges {
  std::vector<Edge> toDark;   ///< left edges of bars
  std::vector<Edge> toLight;  ///< right edges of bars
};

/// Finds the edges where the darkness changes its sign, between pixels.
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

/// A module that is the same in all symbols of a kind, or of the quiet zones beside them.
struct KnownModule {
  float part;  ///< where its centre is: 0 at the symbol's start, 1 at its end
  float sign;  ///< 1 for a dark one, -1 for a light one
};

std::vector<KnownModule> knownModules(const RetailSymbol& symbol) {
  const std::string quiet(kQuietZone, '0');
  const std::string modules = quiet + symbol.modules + quiet;
  std::vector<KnownModule> known;
  for (std::size_t i = 0; i < modules.size(); ++i) {
    if (modules[i] == '?') {
      continue;
    }
    const float centre = static_cast<float>(i) + 0.5F - kQuietZone;
    known.push_back({centre / static_cast<float>(symbol.modules.size()), modules[i] == '1' ? 1.0F : -1.0F});
  }
  return known;
}

using Darkness = float (BarProfile::*)(float) const;

/// Returns the correlation of the row's darkness with the known modules, -1 to 1.
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

/// Returns the best of a few bulges for a symbol between the two edges. `module` is the width of a module in
/// pixels.
SymbolFit roughFit(const BarProfile& profile, const std::vector<KnownModule>& known, float start, float end,
                   float module) {
  SymbolFit best;
  for (int i = -kBulgeSteps; i <= kBulgeSteps; ++i) {
    SymbolFit fit{start, end, static_cast<float>(i) * kBulgeStep * module};
    fit.score = correlation<&BarProfile::darknessNear>(profile, known, fit);
    if (fit.score > best.score) {
      best = fit;
    }
  }
  return best;
}

/// Climbs to the nearest maximum of the correlation, with ever smaller steps of start, end and bulge.
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
          if (moved.score <= fit.score || std::abs(moved.bulge) > kMaxBulge * module) {
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
  const float minLength =
      std::max(modules * kMinPixelsPerModule, static_cast<float>(profile.width()) * kMinShareOfRow);
  const Edges edges = edgesOf(profile);
  std::vector<SymbolFit> fits;
  for (const Edge& left : edges.toDark) {
    for (const Edge& right : edges.toLight) {
      const float module = (right.place - left.place) / modules;
      if (module * modules < minLength || std::min(left.quiet, right.quiet) < kQuietZone * module) {
        continue;
      }
      fits.push_back(roughFit(profile, known, left.place, right.place, module));
      if (!symbol.isSymmetrical) {
        fits.push_back(roughFit(profile, known, right.place, left.place, module));
      }
    }
  }
  const std::size_t count = std::min(kMaxFits, fits.size());
  std::partial_sort(fits.begin(), fits.begin() + static_cast<std::ptrdiff_t>(count), fits.end(), isHigher);
  fits.resize(count);
  for (SymbolFit& fit : fits) {
    refine(profile, known, std::abs(fit.end - fit.start) / modules, fit);
  }
  std::erase_if(fits, [](const SymbolFit& fit) { return fit.score < kMinScore; });
  return fits;
}

}  // namespace nivlo
