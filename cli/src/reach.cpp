#include "reach.hpp"

#include <search_path_utilities/lookup.hpp>

#include "searched_entries.hpp"

namespace vornixpath {

using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::IPathEntry;
using Quorvex::PathManagement::MainScope;
using Quorvex::PathManagement::VisibleScope;

namespace {

template <class Set>
void Insert(const std::vector<EntryPtr>& entries, Set& set) {
  for (const EntryPtr& entry : entries) set.insert(entry.get());
}

}  // namespace

Reach::Reach(const Standpoint& standpoint, const Quorvex::PathManagement::detail::SearchTarget& target) {
  const auto& path = standpoint.path;
  constexpr auto kIgnoringCase = FilenameMatchingPolicy::CaseInsensitive;
  if (Quorvex::PathManagement::IsPartialPathname(target.GetBaseName())) {
    Insert(EntriesSearchedInScope(path, VisibleScope, target, standpoint.policy), searched_);
    Insert(EntriesSearchedInScope(path, VisibleScope, target, kIgnoringCase), searchedInAnyLetterCase_);
    return;
  }
  Insert(EntriesSearchedInScope(path, MainScope, target, standpoint.policy), searched_);
  Insert(ClassFoldersFor(path, target), searched_);
  Insert({PrivateFolderSeenFrom(standpoint)}, searched_);
  Insert(ClassFoldersFor(path, target, kIgnoringCase), searchedInAnyLetterCase_);
}

bool Reach::Includes(const IPathEntry& entry) const { return searched_.count(&entry) != 0; }

bool Reach::WouldIncludeInAnyLetterCase(const IPathEntry& entry) const {
  return searchedInAnyLetterCase_.count(&entry) != 0;
}

}  // namespace vornixpath
