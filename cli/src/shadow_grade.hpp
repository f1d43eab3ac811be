#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace vornixpath {

/// How grave it is that one thing hides another, from harmless to grave.
enum class ShadowGrade {
  SameFile,    ///< both are one file: a hard or symbolic link
  Identical,   ///< two files of equal content
  Different,   ///< of different content, or one of them could not be read
  LetterCase,  ///< names that differ in letter case only: where that makes no difference, one would hide the other
  Kind         ///< a plain file, and a class or package
};

inline constexpr std::array<std::string_view, 5> kShadowGradeNames = {"same-file", "identical", "different",
                                                                      "letter-case", "kind"};

[[nodiscard]] constexpr std::string_view NameOf(ShadowGrade grade) {
  return kShadowGradeNames[static_cast<std::size_t>(grade)];
}

/// The grade of that name, or nothing.
[[nodiscard]] constexpr std::optional<ShadowGrade> ShadowGradeFrom(std::string_view name) {
  for (std::size_t i = 0; i < kShadowGradeNames.size(); ++i) {
    if (kShadowGradeNames[i] == name) return static_cast<ShadowGrade>(i);
  }
  return std::nullopt;
}

}  // namespace vornixpath
