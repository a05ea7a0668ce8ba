#pragma once
// Message box titles several modules share.
#include <string_view>

namespace lumora {

inline constexpr std::string_view kErrorTitle = "错误";
inline constexpr std::string_view kDoneTitle = "完毕";
inline constexpr std::string_view kDeletedTitle = "删除完毕";
inline constexpr std::string_view kDeleteFailedTitle = "删除失败";

}  // namespace lumora
