#include "looked_for.hpp"

#include <fl/filesystem/displayed_text.hpp>
#include <search_path_interfaces/constants.hpp>

namespace vornixpath {

using Quorvex::PathManagement::detail::SearchTarget;

std::u16string FolderPartOf(const std::u16string& baseName) {
  const auto separator = baseName.find_last_of(Quorvex::PathManagement::Constants::PathnameSeparatorStr);
  return separator == std::u16string::npos ? std::u16string() : baseName.substr(0, separator + 1);
}

std::vector<std::u16string> NamesLookedFor(const SearchTarget& target) {
  std::vector<std::u16string> names;
  for (const std::u16string& extension : target.GetExtensions()) names.push_back(target.GetBaseName() + extension);
  return names;
}

std::string ListLookedFor(const SearchTarget& target) {
  std::string list;
  for (const std::u16string& name : NamesLookedFor(target)) {
    if (!list.empty()) list += ", ";
    list += fl::filesystem::to_displayed_text(name);
  }
  return list;
}

}  // namespace vornixpath
