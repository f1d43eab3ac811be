#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vornixpath {

/// Whether letter case tells extensions apart.
enum class LetterCase : bool { Counts, MakesNoDifference };

/// What people type for a file when some extensions are tried. Not safe from several threads: the room for a name is
/// used again.
class TypedNames {
 public:
  explicit TypedNames(const std::vector<std::u16string>& extensions);

  /// The base name of a file that has one of the extensions; together with the extension when the base name holds a
  /// dot, other than in front, since that would begin an extension. Empty for every other file. Valid until the next
  /// call, and as long as `baseName`.
  [[nodiscard]] std::u16string_view NameFor(std::u16string_view baseName, std::u16string_view extension,
                                            LetterCase letterCase);

 private:
  [[nodiscard]] bool IsListed(std::u16string_view extension, LetterCase letterCase) const;
  [[nodiscard]] bool EndsInListed(std::u16string_view fullName, LetterCase letterCase) const;

  std::vector<std::u16string> extensions_;
  std::vector<std::u16string> folded_;
  std::u16string room_;
};

}  // namespace vornixpath
