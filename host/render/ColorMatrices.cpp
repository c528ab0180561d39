#include "host/render/ColorMatrices.hpp"

#include <cstddef>
#include <cstdint>

#include <libyuv/row.h>

namespace nivlo {

namespace {

/// Replaces the gain from U to blue, in 64ths. libyuv's own tables limit it to 2.0, which costs saturated
/// blues up to 14 of 255, although its arithmetic has room for the exact value.
libyuv::YuvConstants withBlueGain(libyuv::YuvConstants constants, std::uint8_t gain) {
#if defined(__aarch64__) || defined(__arm__)
  constants.kUVCoeff[0] = gain;
#else
  for (std::size_t i = 0; i < sizeof(constants.kUVToB); i += 2) {
    constants.kUVToB[i] = gain;
  }
#endif
  return constants;
}

constexpr std::uint8_t kBlueGain601 = 129;  // 2.017 * 64
constexpr std::uint8_t kBlueGain709 = 135;  // 2.112 * 64

}  // namespace

const libyuv::YuvConstants* colorMatrix(ColorMatrix matrix, ColorRange range) {
  alignas(32) static const auto limited601 = withBlueGain(libyuv::kYuvI601Constants, kBlueGain601);
  alignas(32) static const auto limited709 = withBlueGain(libyuv::kYuvH709Constants, kBlueGain709);
  const bool full = range == ColorRange::Full;
  if (matrix == ColorMatrix::BT709) {
    return full ? &libyuv::kYuvF709Constants : &limited709;
  }
  return full ? &libyuv::kYuvJPEGConstants : &limited601;
}

}  // namespace nivlo
