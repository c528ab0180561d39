// Presets for people.
#pragma once

#include <string>

#include "platform/Foundation/NSDictionary.hpp"

namespace nivlo {

/// What a preset shows and does, for example "the back camera, codes are offered".
std::string presetInWords(const NSDictionary& preset);

}  // namespace nivlo
