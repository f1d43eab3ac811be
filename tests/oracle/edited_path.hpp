#pragma once

// What the editing of a path must come to, element by element: slow, obvious, and written apart from the library.

#include <algorithm>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <vector>

namespace Quorvex::PathManagement::oracle {

using FolderList = std::vector<foundation::storage::vfs::AbsoluteIRI>;

inline bool Holds(const FolderList& folders, const foundation::storage::vfs::AbsoluteIRI& folder) {
  return std::count(folders.begin(), folders.end(), folder) > 0;
}

/// `path` less every occurrence of each folder of `given`.
inline FolderList Removed(const FolderList& path, const FolderList& given) {
  FolderList kept;
  for (const auto& folder : path) {
    if (!Holds(given, folder)) kept.push_back(folder);
  }
  return kept;
}

/// The mentions in `given` of folders that `path` does not hold.
inline FolderList Missing(const FolderList& path, const FolderList& given) { return Removed(given, path); }

inline FolderList FirstMentions(const FolderList& given) {
  FolderList mentions;
  for (const auto& folder : given) {
    if (!Holds(mentions, folder)) mentions.push_back(folder);
  }
  return mentions;
}

inline FolderList Joined(FolderList first, const FolderList& second) {
  for (const auto& folder : second) first.push_back(folder);
  return first;
}

inline FolderList AddedAtBeginning(const FolderList& path, const FolderList& given) {
  return Joined(FirstMentions(given), Removed(path, given));
}

inline FolderList AddedAtEnd(const FolderList& path, const FolderList& given) {
  return Joined(Removed(path, given), FirstMentions(given));
}

}  // namespace Quorvex::PathManagement::oracle
