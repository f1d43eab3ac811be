#include "looked_for.hpp"

#include <algorithm>
#include <fl/filesystem/displayed_text.hpp>
#include <search_path_interfaces/constants.hpp>

namespace vornixpath {

using Quorvex::PathManagement::detail::SearchTarget;

std::u16string FolderPartOf(const std::u16string& baseName) {
  const auto separator = baseName.find_last_of(Quorvex::PathManagement::Constants::PathnameSeparatorStr);
  return separator == std::u16string::npos ? std::u16string() : baseName.substr(0, separator + 1);
}

std::vector<std::u16string> FolderNamesIn(const std::u16string& folders) {
  const auto& separators = Quorvex::PathManagement::Constants::PathnameSeparatorStr;
  std::vector<std::u16string> names;
  for (std::size_t begin = folders.find_first_not_of(separators); begin != std::u16string::npos;) {
    const std::size_t end = std::min(folders.find_first_of(separators, begin), folders.size());
    names.push_back(folders.substr(begin, end - begin));
    begin = folders.find_first_not_of(separators, end);
  }
  return names;
}

bool NamesAFile(const SearchTarget& target) {
  return FolderPartOf(target.GetBaseName()).size() < target.GetBaseName().size();
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
