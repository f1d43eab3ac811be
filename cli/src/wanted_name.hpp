#pragma once

#include <search_path_interfaces/search_target.hpp>
#include <string>
#include <vector>

namespace vornixpath {

/// How a file's name meets the names looked for.
enum class NameMatch { None, Exact, OtherLetterCase, OtherExtension };

/// The names that a target looks for within a folder, ready to be compared with many files.
class WantedName {
 public:
  /// With `ignoringCase`, letter case makes no difference.
  WantedName(const Quorvex::PathManagement::detail::SearchTarget& target, bool ignoringCase);

  [[nodiscard]] NameMatch MatchOf(const std::u16string& fileName) const;

 private:
  [[nodiscard]] bool HasOtherExtension(const std::u16string& fileName) const;

  bool ignoringCase_;
  std::u16string baseName_;
  std::u16string foldedBaseName_;
  std::vector<std::u16string> names_;
  std::vector<std::u16string> foldedNames_;
};

}  // namespace vornixpath
