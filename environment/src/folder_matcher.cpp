#include "folder_matcher.hpp"

#include <algorithm>
#include <fl/filesystem/path.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <search_path_interfaces/constants.hpp>
#include <search_path_utilities/lookup.hpp>

namespace Quorvex::PathEnvironment {

using PathManagement::FilenameMatchingPolicy;

namespace {

bool IsSeparator(char16_t unit) {
  return PathManagement::Constants::PathnameSeparatorStr.find(unit) != std::u16string::npos;
}

}  // namespace

FolderMatcher::FolderMatcher(std::u16string_view folders, FilenameMatchingPolicy policy)
    : policy_(policy), components_(SplitIntoComponents(folders)) {
  const bool isWholePath = !folders.empty() && IsSeparator(folders.front());
  if (isWholePath) wholePath_ = fl::filesystem::detail::make_native_form(std::u16string(folders), true);
}

bool FolderMatcher::Matches(const std::shared_ptr<const FolderEntry>& entry) const {
  if (!wholePath_.empty()) return (*entry->GetFilenameComparator(policy_))(wholePath_, entry->GetLocation().getPath());
  try {
    return PathManagement::DoesPartialPathnameMatchPathEntryIRI(components_, entry, policy_);
  } catch (const foundation::storage::vfs::Exception&) {
    return false;
  }
}

const std::u16string& FolderMatcher::GetLastName() const noexcept {
  static const std::u16string none;
  return components_.empty() ? none : components_.back();
}

Components SplitIntoComponents(std::u16string_view text) {
  const std::u16string& separators = PathManagement::Constants::PathnameSeparatorStr;
  Components components;
  for (std::size_t begin = text.find_first_not_of(separators); begin != std::u16string_view::npos;) {
    const std::size_t end = std::min(text.find_first_of(separators, begin), text.size());
    components.emplace_back(text.substr(begin, end - begin));
    begin = text.find_first_not_of(separators, end);
  }
  return components;
}

}  // namespace Quorvex::PathEnvironment
