// Matching a partial pathname, folder names only, against the folder of an entry: from the end, name by name.

#include <boost/container/small_vector.hpp>
#include <editing/split_at_any_of.hpp>
#include <functional>
#include <search_path_interfaces/constants.hpp>
#include <search_path_utilities/lookup.hpp>
#include <search_path_utilities/path_editing.hpp>

namespace Quorvex::PathManagement {

namespace {

// Inline room for the depth of common folders, so that the list itself costs no allocation.
using Components = boost::container::small_vector<std::u16string, 8>;

Components ComponentsOf(const IPathEntry& entry) {
  return detail::SplitAtAnyOf<Components>(GetStringFromIRI(entry.GetAbsoluteIRI()), Constants::PathnameSeparatorStr);
}

bool MatchesLeniently(const std::u16string& wanted, const std::u16string& folder, const FilenameComparator& matches) {
  if (matches(wanted, folder)) return true;
  const bool isMarked = !folder.empty() && (folder.front() == u'@' || folder.front() == u'+');
  return isMarked && matches(wanted, folder.substr(1));
}

// Whether the enclosing folders, from the innermost outwards, may go unnamed: no package before the first plain folder.
template <class Iterator>
bool MayGoUnnamed(Iterator folder, const Iterator& end) {
  for (; folder != end; ++folder) {
    const PathEntryType kind = GetPathEntryTypeFromBaseName(*folder);
    if (kind == PathEntryType::Package) return false;
    if (kind == PathEntryType::Main) return true;
  }
  return true;
}

}  // namespace

bool DoesPartialPathnameMatchPathEntryIRI(
    const detail::AnyRangeAdapter<std::u16string, boost::bidirectional_traversal_tag>& partial,
    // NOLINTNEXTLINE(performance-unnecessary-value-param): by value is the contract
    std::shared_ptr<const IPathEntry> entry, const FilenameMatchingPolicy& policy) {
  const Components folders = ComponentsOf(*entry);
  const auto comparator = entry->GetFilenameComparator(policy);
  const FilenameComparator none;
  const FilenameComparator& matches = comparator ? *comparator : none;

  auto folder = folders.rbegin();
  auto wanted = partial.end();
  while (folder != folders.rend() && wanted != partial.begin()) {
    if (!MatchesLeniently(*--wanted, *folder++, matches)) return false;
  }
  return wanted == partial.begin() && MayGoUnnamed(folder, folders.rend());
}

}  // namespace Quorvex::PathManagement
