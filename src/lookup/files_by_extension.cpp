// Every file with one of some extensions, whether something hides it or not.

#include <search_path_utilities/lookup.hpp>

#include "or_empty.hpp"

namespace Quorvex::PathManagement {

namespace {

void AppendFiles(const std::shared_ptr<const IPathEntry>& entry, const std::vector<std::u16string>& extensions,
                 FilenameMatchingPolicy policy, std::vector<FoundItem>& files) {
  const auto comparator = entry->GetFilenameComparator(policy);
  const FilenameComparator& isWanted = detail::OrEmpty(comparator);
  const auto items = entry->GetItems();
  for (const auto& item : *items) {
    // Deliberately no stop at the first match: once for each wanted extension.
    for (const std::u16string& extension : extensions) {
      if (isWanted(extension, item->extension)) files.emplace_back(item, entry);
    }
  }
}

}  // namespace

std::vector<FoundItem> FindFilesByExtensions(const std::shared_ptr<const IPathEntry>& entry,
                                             const std::vector<std::u16string>& extensions,
                                             FilenameMatchingPolicy policy) {
  std::vector<FoundItem> files;
  AppendFiles(entry, extensions, policy, files);
  return files;
}

std::vector<FoundItem> FindFilesByExtensions(const IPath& path, SearchScope scope,
                                             const std::vector<std::u16string>& extensions,
                                             FilenameMatchingPolicy policy) {
  std::vector<FoundItem> files;
  path.ForEachEntry(scope, [&](const std::shared_ptr<const IPathEntry>& entry) {
    AppendFiles(entry, extensions, policy, files);
    return false;
  });
  return files;
}

}  // namespace Quorvex::PathManagement
