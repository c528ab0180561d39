#include "linux/codes/retail/DigitMatcher.hpp"

#include <algorithm>
#include <cmath>

namespace nivlo {

namespace {

constexpr int kSamplesOfModule = 3;
// A module of each neighbour is known as well.
constexpr int kSamplesOfDigit = kSamplesOfModule * (kModulesOfDigit + 2);
// Standard deviation of the blur, in modules.
constexpr std::array kBlurs = {0.25F, 0.45F, 0.65F, 0.85F, 1.1F};
// How far a digit may lie aside, in modules, and what each step costs of its score.
constexpr float kDriftStep = 0.125F;
constexpr int kDriftSteps = 2;
constexpr float kCostOfDriftStep = 0.015F;

/// Grey levels of a digit, of mean 0 and length 1: a product of two is their correlation.
using Samples = std::array<float, kSamplesOfDigit>;

/// Of the sample's centre, from the digit's start.
float moduleOf(int sample) { return (static_cast<float>(sample) + 0.5F) / kSamplesOfModule - 1; }

void normalise(Samples& samples) {
  float sum = 0;
  for (const float sample : samples) {
    sum += sample;
  }
  float squares = 0;
  for (float& sample : samples) {
    sample -= sum / kSamplesOfDigit;
    squares += sample * sample;
  }
  const float scale = 1 / std::sqrt(std::max(1e-6F, squares));
  for (float& sample : samples) {
    sample *= scale;
  }
}

float product(const Samples& first, const Samples& second) {
  float sum = 0;
  for (int i = 0; i < kSamplesOfDigit; ++i) {
    sum += first[i] * second[i];
  }
  return sum;
}

/// The share of a blurred edge's dark side that arrives at that distance from it, in standard deviations.
float darkBehind(float distance) { return 0.5F * std::erfc(-distance / std::sqrt(2.0F)); }

/// A digit of set A or B, between the dark module that ends what is before it and the light one that comes
/// next; what lies beyond can be both.
Samples drawn(unsigned modules, float blur) {
  constexpr float kUnknown = 0.5F;
  Samples samples{};
  for (int i = 0; i < kSamplesOfDigit; ++i) {
    float before = kUnknown;
    for (int module = -1; module <= kModulesOfDigit + 1; ++module) {
      float here = kUnknown;
      if (module == -1) {
        here = 1;
      }
      if (module >= 0 && module < kModulesOfDigit) {
        here = modules >> (kModulesOfDigit - 1 - module) & 1 ? 1 : 0;
      }
      if (module == kModulesOfDigit) {
        here = 0;
      }
      samples[i] += (here - before) * darkBehind((moduleOf(i) - static_cast<float>(module)) / blur);
      before = here;
    }
  }
  normalise(samples);
  return samples;
}

struct Templates {
  std::array<std::array<Samples, 20>, kBlurs.size()> digits;  ///< by blur; ten of set A, ten of set B

  Templates() {
    for (std::size_t blur = 0; blur < kBlurs.size(); ++blur) {
      for (int digit = 0; digit < 10; ++digit) {
        digits[blur][digit] = drawn(setAModules(digit), kBlurs[blur]);
        digits[blur][10 + digit] = drawn(setBModules(digit), kBlurs[blur]);
      }
    }
  }
};

/// As dark as the row is from `module` on.
Samples seen(const BarProfile& profile, const SymbolFit& fit, float module, float modules) {
  Samples samples;
  for (int i = 0; i < kSamplesOfDigit; ++i) {
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
      const Samples samples = seen(profile, fit, module, static_cast<float>(symbol.modules.size()));
      const float cost = kCostOfDriftStep * static_cast<float>(std::abs(step));
      for (std::size_t blur = 0; blur < kBlurs.size(); ++blur) {
        for (std::size_t column = 0; column < (leads ? 20 : 10); ++column) {
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
