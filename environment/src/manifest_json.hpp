// JSON whose values know where they stand, read as strictly as a manifest deserves.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace Quorvex::PathEnvironment {

struct JsonMember;

struct JsonValue {
  using Array = std::vector<JsonValue>;
  using Object = std::vector<JsonMember>;

  /// An integer is a std::int64_t where that holds it, every other number a double.
  std::variant<std::nullptr_t, bool, std::int64_t, double, std::u16string, Array, Object> content;
  std::size_t line = 0;  ///< of its beginning, from 1
};

struct JsonMember {
  std::u16string name;
  std::size_t line = 0;  ///< of the name
  JsonValue value;
};

/// The value that `text` is, in UTF-8. Throws ManifestError for anything else, for a name that stands twice in one
/// object, and for more than 32 levels. O(n log n).
[[nodiscard]] JsonValue ParseJson(std::string_view text);

}  // namespace Quorvex::PathEnvironment
