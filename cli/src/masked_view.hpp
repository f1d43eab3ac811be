#pragma once

#include <boost/optional/optional.hpp>
#include <memory>
#include <mutex>
#include <search_path_environment/folder_path.hpp>
#include <search_path_utilities/composite_paths.hpp>
#include <vector>

#include "entry_ptr.hpp"

namespace vornixpath {

/// A path without some of its folders: it answers as though they did not stand on it.
///
/// The masks are given in path order, on which the first file in scope depends: it is looked for right after each
/// masked folder in turn. The first one in sight stands right after a file of some masked folder, and what stands after
/// a folder masked before that one is that very file, or masked as well.
class MaskedView final : public Quorvex::PathManagement::MultiMaskedPath {
 public:
  /// `maskedFolders` are main entries of `path`, in path order, each once.
  MaskedView(const std::shared_ptr<const Quorvex::PathEnvironment::FolderPath>& path,
             std::vector<EntryPtr> maskedFolders);
  ~MaskedView() override;

  /// Of the files of one folder the one that the folder itself finds first: an exact name before one in another letter
  /// case.
  [[nodiscard]] boost::optional<Quorvex::PathManagement::FoundItem> FindFirstInScope(
      Quorvex::PathManagement::SearchScope scope, const Quorvex::PathManagement::detail::SearchTarget& target,
      Quorvex::PathManagement::FilenameMatchingPolicy policy) const override;

  /// A masked folder may hide another at the same place: the special folder of a folder in sight.
  [[nodiscard]] EntryPtr GetPathEntryFromAbsoluteIRI(
      const foundation::storage::vfs::AbsoluteIRI& location,
      Quorvex::PathManagement::FilenameMatchingPolicy policy) const override;
  [[nodiscard]] EntryPtr GetPathEntryFromAbsoluteIRI(
      const foundation::storage::vfs::CanonicalAbsoluteIRI& location) const override;

 private:
  [[nodiscard]] const Quorvex::PathEnvironment::FolderPath& GetRest() const;

  std::shared_ptr<const Quorvex::PathEnvironment::FolderPath> path_;
  mutable std::once_flag restOnce_;
  mutable std::shared_ptr<const Quorvex::PathEnvironment::FolderPath> rest_;  // a path over what is in sight
};

}  // namespace vornixpath
