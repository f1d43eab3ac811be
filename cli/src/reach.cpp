#include "reach.hpp"

#include <memory>
#include <search_path_utilities/lookup.hpp>
#include <vector>

#include "looked_for.hpp"

namespace vornixpath {

using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::IPathEntry;
using Quorvex::PathManagement::MainScope;
using Quorvex::PathManagement::PathEntryType;

namespace {

template <class Entries>
void Insert(const std::vector<std::shared_ptr<const IPathEntry>>& entries, Entries& set) {
  for (const auto& entry : entries) set.insert(entry.get());
}

}  // namespace

Reach::Reach(const Standpoint& standpoint, const Quorvex::PathManagement::detail::SearchTarget& target)
    : plainFolders_(FolderPartOf(target.GetBaseName()).empty()) {
  const auto& path = standpoint.path;
  constexpr auto kNative = FilenameMatchingPolicy::Native;
  constexpr auto kIgnoringCase = FilenameMatchingPolicy::CaseInsensitive;
  if (!plainFolders_) {
    const std::u16string folders = FolderPartOf(target.GetBaseName());
    const auto& scope = Quorvex::PathManagement::VisibleScope;
    Insert(path.GetPartiallyMatchingEntries(scope, folders, standpoint.policy), within_);
    Insert(path.GetPartiallyMatchingEntries(scope, folders, kIgnoringCase), nearly_);
    return;
  }

  Insert(path.GetMethodEntriesByName(MainScope, target.GetBaseName(), kNative), within_);
  Insert(path.GetMethodEntriesByName(MainScope, target.GetBaseName(), kIgnoringCase), nearly_);
  const auto folder = standpoint.folder ? path.GetPathEntryFromAbsoluteIRI(*standpoint.folder, kNative) : nullptr;
  const auto privateFolder = folder ? folder->GetPrivateEntry() : nullptr;
  if (privateFolder) within_.insert(privateFolder.get());
}

bool Reach::Holds(const IPathEntry& entry) const {
  if (plainFolders_ && entry.GetEntryType() == PathEntryType::Main) return true;
  return within_.count(&entry) != 0;
}

bool Reach::HoldsButForLetterCase(const IPathEntry& entry) const { return nearly_.count(&entry) != 0; }

}  // namespace vornixpath
