#include "path_comparison.hpp"

#include <algorithm>
#include <iterator>

#include "offered_names.hpp"

namespace vornixpath {

using Quorvex::PathEnvironment::FolderPath;
using Quorvex::PathManagement::ComparisonFilter;

namespace {

std::vector<std::u16string> SortedNames(const Quorvex::PathManagement::IPathEntry& folder) {
  std::vector<std::u16string> names;
  ForEachName(folder, [&names](std::u16string_view baseName, std::u16string_view extension) {
    names.push_back(std::u16string(baseName).append(extension));
  });
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace

PathComparison Compare(std::shared_ptr<const FolderPath> before, std::shared_ptr<const FolderPath> after,
                       const ComparisonDepth& depth) {
  PathComparison comparison{std::move(before), std::move(after), {}, {}};
  comparison.changes =
      ChangesBetween(*comparison.before, *comparison.after,
                     depth.isDeep ? ComparisonFilter::IncludeMethodEntries : ComparisonFilter::MainEntriesOnly);
  if (depth.extensions) {
    comparison.names = ChangedNames(*comparison.before, *comparison.after, comparison.changes, *depth.extensions);
  }
  return comparison;
}

ChangedFiles FilesChangedBy(const FolderChange& change) {
  ChangedFiles files;
  if (change.kind != ChangeKind::Refreshed) return files;
  const auto before = SortedNames(*change.before);
  const auto after = SortedNames(*change.after);
  std::set_difference(after.begin(), after.end(), before.begin(), before.end(), std::back_inserter(files.added));
  std::set_difference(before.begin(), before.end(), after.begin(), after.end(), std::back_inserter(files.removed));
  return files;
}

}  // namespace vornixpath
