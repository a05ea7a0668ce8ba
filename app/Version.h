#pragma once
// The version text Lumora shows on its start-up screen and in its help box, and writes where a
// version is asked for (exported information files). It comes from the build's project version.
#include <string_view>

namespace lumora {

inline constexpr std::string_view kVersionText = LUMORA_VERSION_TEXT;

}  // namespace lumora
