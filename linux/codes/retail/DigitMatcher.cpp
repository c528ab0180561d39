#include "linux/codes/retail/DigitMatcher.hpp"

#include <algorithm>
#include <cmath>

namespace nivlo {

namespace {

constexpr int kSamplesPerModule = 3;
// One module of each neighbour is compared too, because it is known whether that is dark or light.
constexpr int kSamplesPerDigit = kSamplesPerModule * (kModulesPerDigit + 2);
// The blurs to try: standard deviations in modules.
constexpr std::array kBlurs = {0.25F, 0.45F, 0.65F, 0.85F, 1.1F};
// A digit may lie up to kDriftSteps steps of kDriftStep modules aside; each step lowers its correlation.
constexpr float kDriftStep = 0.125F;
constexpr int kDriftSteps = 2;
constexpr float kDriftStepCost = 0.015F;

/// The darkness of a digit, normalised to mean 0 and length 1, so that the product of two is their
/// correlation.
using Samples = std::array<float, kSamplesPerDigit>;

/// Returns where a sample's centre is, in modules from the start of the digit.
float moduleOf(int sample) { return (static_cast<float>(sample) + 0.5F) / kSamplesPerModule - 1; }

void normalise(Samples& samples) {
  float sum = 0;
  for (const float sample : samples) {
    sum += sample;
  }
  float squares = 0;
  for (float& sample : samples) {
    sample -= sum / kSamplesPerDigit;
    squares += sample * sample;
  }
  const float scale = 1 / std::sqrt(std::max(1e-6F, squares));
  for (float& sample : samples) {
    sample *= scale;
  }
}

float product(const Samples& first, const Samples& second) {
  float sum = 0;
  for (int i = 0; i < kSamplesPerDigit; ++i) {
    sum += first[i] * second[i];
  }
  return sum;
}

/// Returns how dark a blurred edge from light to dark is at a distance from it, in standard deviations of the
/// blur: 0.5 on the edge, close to 1 well inside the dark.
float darknessOfEdge(float distance) { return 0.5F * std::erfc(-distance / std::sqrt(2.0F)); }

/// Renders a digit of set A or B with a blur. The module before such a digit is always dark and the one after
/// it always light; further out both are possible, so there the rendering is grey.
Samples rendered(unsigned modules, float blur) {
  constexpr float kUnknown = 0.5F;
  Samples samples{};
  for (int i = 0; i < kSamplesPerDigit; ++i) {
    float before = kUnknown;
    for (int module = -1; module <= kModulesPerDigit + 1; ++module) {
      float here = kUnknown;
      if (module == -1) {
        here = 1;
      }
      if (module >= 0 && module < kModulesPerDigit) {
        here = modules >> (kModulesPerDigit - 1 - module) & 1 ? 1 : 0;
      }
      if (module == kModulesPerDigit) {
        here = 0;
      }
      samples[i] += (here - before) * darknessOfEdge((moduleOf(i) - static_cast<float>(module)) / blur);
      before = here;
    }
  }
  normalise(samples);
  return samples;
}

struct Templates {
  /// For each blur ten digits of set A, then ten of set B.
  std::array<std::array<Samples, 20>, kBlurs.size()> digits;

  Templates() {
    for (std::size_t blur = 0; blur < kBlurs.size(); ++blur) {
      for (int digit = 0; digit < 10; ++digit) {
        digits[blur][digit] = rendered(setAModules(digit), kBlurs[blur]);
        digits[blur][10 + digit] = rendered(setBModules(digit), kBlurs[blur]);
      }
    }
  }
};

/// Samples the row's darkness for the digit that starts at `module`, of the symbol's `modules`.
Samples sampled(const BarProfile& profile, const SymbolFit& fit, float module, float modules) {
  Samples samples;
  for (int i = 0; i < kSamplesPerDigit; ++i) {
    samples[i] = -profile.grey(fit.at((module + moduleOf(i)) / modules));
  }
  normalise(samples);
  return samples;
}

}  // namespace

DigitScores matchDigits(const BarProfile& profile, const RetailSymbol& symbol, const SymbolFit& fit) {
  static const Templates kTemplates;
  std::array<DigitScores, kBlurs.size()> scores{};
  std::array<float, kBlurs.size()> sums{};
  for (std::size_t place = 0; place < symbol.digits.size(); ++place) {
    for (DigitScores& ofBlur : scores) {
      ofBlur[place].fill(-1);
    }
    const bool leads = place < symbol.leading;
    for (int step = -kDriftSteps; step <= kDriftSteps; ++step) {
      const float module = static_cast<float>(symbol.digits[place]) + static_cast<float>(step) * kDriftStep;
      const Samples samples = sampled(profile, fit, module, static_cast<float>(symbol.modules.size()));
      const float cost = kDriftStepCost * static_cast<float>(std::abs(step));
      for (std::size_t blur = 0; blur < kBlurs.size(); ++blur) {
        for (std::size_t column = 0; column < (leads ? 20 : 10); ++column) {
          // Trailing digits are in set C, the negative of set A.
          const float same = product(samples, kTemplates.digits[blur][column]);
          float& best = scores[blur][place][column];
          best = std::max(best, (leads ? same : -same) - cost);
        }
      }
    }
    for (std::size_t blur = 0; blur < kBlurs.size(); ++blur) {
      sums[blur] += *std::max_element(scores[blur][place].begin(), scores[blur][place].end());
    }
  }
  return scores[std::max_element(sums.begin(), sums.end()) - sums.begin()];
}

}  // namespace nivlo
