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

FolderMatcher::FolderMatcher(const std::u16string& folders, FilenameMatchingPolicy policy)
    : policy_(policy), components_(SplitIntoComponents(folders)) {
  const bool isWholePath = !folders.empty() && IsSeparator(folders.front());
  if (isWholePath) wholePath_ = fl::filesystem::detail::make_native_form(folders, true);
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

std::vector<std::u16string> SplitIntoComponents(const std::u16string& text) {
  std::vector<std::u16string> components;
  for (auto begin = text.begin(); begin != text.end();) {
    const auto end = std::find_if(begin, text.end(), IsSeparator);
    if (begin != end) components.emplace_back(begin, end);
    begin = std::find_if_not(end, text.end(), IsSeparator);
  }
  return components;
}

}  // namespace Quorvex::PathEnvironment
