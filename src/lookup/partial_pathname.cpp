// Matching a partial pathname, folder names only, against a folder: from the end, name by name.

#include <boost/container/small_vector.hpp>
#include <editing/split_at_any_of.hpp>
#include <iterator>
#include <search_path_interfaces/constants.hpp>
#include <search_path_utilities/lookup.hpp>
#include <search_path_utilities/path_editing.hpp>
#include <string_view>
#include <utility>

#include "or_empty.hpp"

namespace Quorvex::PathManagement {

namespace {

using EntryPtr = std::shared_ptr<const IPathEntry>;
using NameIterator = PartialPathname::iterator;

// A name within the text of a folder, in the form that the tokenizer fills in.
class Component : public std::u16string_view {
 public:
  void assign(std::u16string::const_iterator first, std::u16string::const_iterator last) {
    std::u16string_view::operator=(std::u16string_view(first, last));
  }
};

// The names in the text of a folder, which it keeps. Inline room for the depth of common folders, so that the list
// costs no allocation.
class Components {
 public:
  using Names = boost::container::small_vector<Component, 16>;

  explicit Components(std::u16string text)
      : text_(std::move(text)), names_(detail::SplitAtAnyOf<Names>(text_, Constants::PathnameSeparatorStr)) {}
  Components(const Components&) = delete;
  Components& operator=(const Components&) = delete;
  ~Components() = default;

  [[nodiscard]] Names::const_reverse_iterator Innermost() const { return names_.rbegin(); }
  [[nodiscard]] Names::const_reverse_iterator End() const { return names_.rend(); }

 private:
  const std::u16string text_;
  const Names names_;
};

using FolderIterator = Components::Names::const_reverse_iterator;

bool MatchesLeniently(const std::u16string& wanted, std::u16string folder, const FilenameComparator& matches) {
  if (matches(wanted, folder)) return true;
  const bool isMarked = !folder.empty() && (folder.front() == u'@' || folder.front() == u'+');
  if (!isMarked) return false;
  folder.erase(0, 1);
  return matches(wanted, folder);
}

bool MatchesStrictly(const std::u16string& wanted, const std::u16string& folder, const FilenameComparator& matches) {
  if (folder.starts_with(u'+')) return wanted == folder;
  if (folder.starts_with(u'@')) return wanted == (wanted.starts_with(u'@') ? folder : folder.substr(1));
  if (folder == Constants::PrivateFolderStr) return wanted == folder;
  return matches(wanted, folder);
}

// How far a comparison from the end came: to the first pair that differs, or to where either side begins.
struct Progress {
  bool isPartialUsedUp;
  FolderIterator folder;  // the innermost one that was not matched
};

template <class IsMatch>
Progress CompareFromTheEnd(const NameIterator& first, NameIterator last, const Components& folders,
                           const IsMatch& isMatch) {
  FolderIterator folder = folders.Innermost();
  for (; folder != folders.End() && last != first; ++folder) {
    if (!isMatch(*--last, std::u16string(*folder))) return {false, folder};
  }
  return {last == first, folder};
}

// Whether the enclosing folders, from the innermost outwards, may go unnamed: no package before the first plain folder.
bool MayGoUnnamed(FolderIterator folder, const FolderIterator& end) {
  for (; folder != end; ++folder) {
    const PathEntryType kind = GetPathEntryTypeFromBaseName(std::u16string(*folder));
    if (kind == PathEntryType::Package) return false;
    if (kind == PathEntryType::Main) return true;
  }
  return true;
}

bool IsOutsideAnyPackage(const IPath& path, EntryPtr entry) {
  for (; entry; entry = path.GetParentEntryForEntry(*entry)) {
    if (entry->GetEntryType() == PathEntryType::Package) return false;
  }
  return true;
}

// Whether the names end the location of a main entry. Unlike elsewhere, the folder comes first in a comparison.
bool EndLocationOf(const IPathEntry& mainEntry, const NameIterator& first, const NameIterator& last,
                   const FilenameComparator& matches) {
  const Components folders(mainEntry.GetAbsoluteIRI().getPath());
  const auto isMatch = [&](const auto& wanted, const auto& folder) { return matches(folder, wanted); };
  return CompareFromTheEnd(first, last, folders, isMatch).isPartialUsedUp;
}

}  // namespace

bool DoesPartialPathnameMatchPathEntryIRI(
    // NOLINTNEXTLINE(performance-unnecessary-value-param): by value is the contract
    const PartialPathname& partial, std::shared_ptr<const IPathEntry> entry, const FilenameMatchingPolicy& policy) {
  const Components folders(GetStringFromIRI(entry->GetAbsoluteIRI()));
  const auto comparator = entry->GetFilenameComparator(policy);

  const auto isMatch = [&](const auto& wanted, std::u16string folder) {
    return MatchesLeniently(wanted, std::move(folder), detail::OrEmpty(comparator));
  };
  const Progress progress = CompareFromTheEnd(partial.begin(), partial.end(), folders, isMatch);
  return progress.isPartialUsedUp && MayGoUnnamed(progress.folder, folders.End());
}

bool DoesPartialPathnameMatchPathEntryIRI(const IPath& path, const PartialPathname& partial,
                                          std::shared_ptr<const IPathEntry> entry,
                                          const FilenameMatchingPolicy& policy) {
  const NameIterator first = partial.begin();
  for (NameIterator last = partial.end(); last != first; --last) {
    const auto comparator = entry->GetFilenameComparator(policy);
    if (!MatchesLeniently(*std::prev(last), entry->GetAbsoluteIRI().getName(), detail::OrEmpty(comparator)))
      return false;

    // Beyond the main entry there is its location alone. The name just matched is compared again: here its mark counts.
    EntryPtr parent = path.GetParentEntryForEntry(*entry);
    if (!parent) return EndLocationOf(*entry, first, last, detail::OrEmpty(comparator));
    entry = std::move(parent);
  }
  return IsOutsideAnyPackage(path, std::move(entry));
}

bool DoesPartialPathnameStrictlyMatchPathString(
    const PartialPathname& partial, const std::u16string& pathString,
    const std::function<bool(const std::u16string&, const std::u16string&)>& comparator) {
  const Components folders(pathString);
  const auto isMatch = [&](const auto& wanted, const auto& folder) {
    return MatchesStrictly(wanted, folder, comparator);
  };
  const Progress progress = CompareFromTheEnd(partial.begin(), partial.end(), folders, isMatch);
  if (!progress.isPartialUsedUp) return false;
  return progress.folder == folders.End() ||
         GetPathEntryTypeFromBaseName(std::u16string(*progress.folder)) == PathEntryType::Main;
}

bool DoesPartialPathnameStrictlyMatchPathEntryIRI(const PartialPathname& partial, const IPathEntry& entry,
                                                  const FilenameMatchingPolicy& policy) {
  const auto comparator = entry.GetFilenameComparator(policy);
  return DoesPartialPathnameStrictlyMatchPathString(partial, GetStringFromIRI(entry.GetAbsoluteIRI()),
                                                    detail::OrEmpty(comparator));
}

}  // namespace Quorvex::PathManagement
