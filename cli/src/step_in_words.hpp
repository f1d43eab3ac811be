#pragma once

#include <cstddef>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <string>
#include <unordered_set>

#include "explanation.hpp"

namespace vornixpath {

/// Puts each step of an explanation into words, and tells which folders it would have concerned could not be read. Both
/// arguments must outlive this object.
class StepInWords {
 public:
  StepInWords(const Explanation& explanation, const FolderNumbers& numbers);

  std::string operator()(const AskedForEntry& step) const;
  std::string operator()(const AskedForPrivateFolder& step) const;
  std::string operator()(const AskedForClassFolders& step) const;
  std::string operator()(const AskedInFolder& step) const;
  std::string operator()(const AskedInScope& step) const;
  std::string operator()(const AskedForOrder& step) const;

 private:
  using Entry = Quorvex::PathManagement::IPathEntry;

  [[nodiscard]] std::u16string WrittenFolders() const;
  [[nodiscard]] std::string NumberIn(const Entry& entry) const;
  [[nodiscard]] std::string Numbered(const Entry& entry) const;
  [[nodiscard]] bool IsMasked(const foundation::storage::vfs::AbsoluteIRI& folder) const;
  [[nodiscard]] bool IsUnread(const Entry& entry) const;
  [[nodiscard]] std::string IfUnread(const Entry& entry) const;
  [[nodiscard]] std::ptrdiff_t CountRead(const std::vector<EntryPtr>& entries) const;
  [[nodiscard]] std::string ListUnread(bool alsoWithinFoldersOfPath) const;

  const Explanation& explanation_;
  const FolderNumbers& numbers_;
  std::unordered_set<foundation::storage::vfs::AbsoluteIRI> unread_;
};

}  // namespace vornixpath
