// The features of a picture that may belong to codes.
#pragma once

#include <optional>
#include <vector>

#include "linux/codes/bars/BarFinder.hpp"
#include "linux/codes/matrix/BullseyeFinder.hpp"
#include "linux/codes/matrix/QRFinder.hpp"
#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/picture/Quad.hpp"

namespace nivlo {

/// A picture and the features found in it, which all strategies of a look share. Each kind of feature is
/// searched for when it is first asked for. Used by one thread at a time.
class PictureFeatures {
 public:
  /// The picture's pixels must outlive this object.
  explicit PictureFeatures(const LumaPicture& picture) : picture_(picture) {}

  const LumaPicture& picture() const { return picture_; }
  /// Regions of parallel bars, see findBars.
  const std::vector<Quad>& bars() {
    if (!bars_) {
      bars_ = findBars(picture_);
    }
    return *bars_;
  }
  const std::vector<Bullseye>& bullseyes() {
    if (!bullseyes_) {
      bullseyes_ = findBullseyes(picture_);
    }
    return *bullseyes_;
  }
  const std::vector<QRPlace>& qrPlaces() {
    if (!qrPlaces_) {
      qrPlaces_ = findQRPlaces(picture_);
    }
    return *qrPlaces_;
  }

 private:
  LumaPicture picture_;
  std::optional<std::vector<Quad>> bars_;
  std::optional<std::vector<Bullseye>> bullseyes_;
  std::optional<std::vector<QRPlace>> qrPlaces_;
};

}  // namespace nivlo
