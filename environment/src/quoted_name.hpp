#pragma once

#include <string>
#include <string_view>

namespace Quorvex::PathEnvironment {

/// `name` in quotation marks, safe for a terminal. One of more than 300 characters is shown by its ends and its length:
/// `"aaa...zzz" (5,000 characters)`. A stray half of a character counts as one. O(n).
[[nodiscard]] std::string QuotedName(std::u16string_view name);

}  // namespace Quorvex::PathEnvironment
