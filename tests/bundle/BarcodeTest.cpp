#include <gtest/gtest.h>

#include "bundle/Barcode/Barcode.hpp"

namespace nivlo {
namespace {

using Type = CGPathElement::Type;

std::shared_ptr<Barcode> barcode(const std::vector<CGPoint>& corners, std::optional<std::string> text = "T") {
  return Barcode::processMetadataObject(std::make_shared<AVMetadataMachineReadableCodeObject>(
      "org.iso.QRCode", std::move(text), corners, PictureGeometry{}));
}

CGPath closedPath(const std::vector<CGPoint>& corners) {
  CGPath path;
  for (const auto& corner : corners) {
    path.elements.push_back({path.elements.empty() ? Type::MoveToPoint : Type::AddLineToPoint, corner});
  }
  path.elements.push_back({Type::CloseSubpath, {}});
  return path;
}

TEST(BarcodeRecord, OutlinesItsCornersInAnotherOrder) {
  const std::vector<CGPoint> square{{10, 10}, {110, 10}, {110, 110}, {10, 110}};
  EXPECT_EQ(barcode(square)->boundingBoxPath()->CGPath(), closedPath(square));
  const std::vector<CGPoint> bowTie{{0, 0}, {9, 9}, {9, 0}, {0, 9}};
  for (const auto& corners : {square, bowTie, {{1, 2}, {5, 2}, {3, 7}}, {{4, 5}}}) {
    EXPECT_EQ(barcode(corners)->cornersPath()->CGPath(), closedPath(corners));
  }
  EXPECT_EQ(barcode(bowTie)->boundingBoxPath()->CGPath(), closedPath({{0, 0}, {9, 0}, {9, 9}, {0, 9}}));
}

TEST(BarcodeRecord, KeepsNothingForACategory) {
  static const char kKey = 0;
  const std::shared_ptr<NSObject> record = barcode({{1, 1}});
  record->setAssociatedObject(&kKey, 7);
  EXPECT_EQ(std::any_cast<int>(record->associatedObject(&kKey)), 7);
}

TEST(BarcodeRecord, IsMadeUpWithoutCornersOrText) {
  EXPECT_FALSE(Barcode::processMetadataObject(nullptr));
  EXPECT_FALSE(barcode({}));
  EXPECT_FALSE(barcode({{1, 1}}, std::nullopt));
  EXPECT_EQ(barcode({{1, 1}}, "")->getBarcodeData(), "");
}

}  // namespace
}  // namespace nivlo
