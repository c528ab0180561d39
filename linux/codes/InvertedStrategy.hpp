// Reads codes that are light on dark ground.
#pragma once

#include <memory>

#include "linux/codes/ReadingStrategy.hpp"

namespace nivlo {

/// Lets another strategy read the negative of the picture.
class InvertedStrategy : public ReadingStrategy {
 public:
  explicit InvertedStrategy(std::unique_ptr<ReadingStrategy> inner);

  std::vector<Reading> read(const LumaPicture& picture) override;

 private:
  std::unique_ptr<ReadingStrategy> inner_;
  LumaBuffer negative_;
};

}  // namespace nivlo
