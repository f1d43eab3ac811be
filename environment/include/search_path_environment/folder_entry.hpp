#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <functional>
#include <memory>
#include <search_path_environment/export.hpp>
#include <search_path_environment/folder_proof.hpp>
#include <search_path_environment/path_problem.hpp>
#include <search_path_interfaces/path_entry.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace Quorvex::PathEnvironment {

class FolderNames;
struct PackedNames;

/// The special subfolders directly below a folder.
struct SpecialSubfolders {
  std::shared_ptr<const class FolderEntry> privateEntry;     ///< null when there is none
  std::shared_ptr<const FolderEntry> resources;              ///< null when there is none
  std::vector<std::shared_ptr<const FolderEntry>> classes;   ///< sorted by name
  std::vector<std::shared_ptr<const FolderEntry>> packages;  ///< sorted by name
};

/// An immutable snapshot of one real folder as an entry of a search path: its files, and its special subfolders as
/// method entries in depth.
///
/// Reading a folder is the only time storage is touched; afterwards every operation is const and safe from any thread.
/// An entry does not know its parent, since versions of a path share entries; the path does.
class SEARCH_PATH_ENVIRONMENT_EXPORT FolderEntry final : public PathManagement::IPathEntry,
                                                         public std::enable_shared_from_this<FolderEntry> {
 public:
  /// As the contract hands out entries.
  using EntryPtr = std::shared_ptr<const PathManagement::IPathEntry>;
  /// A group of method entries; never null.
  using EntryGroup = std::shared_ptr<const std::vector<EntryPtr>>;
  /// Files, as they are made on demand.
  using Items = std::vector<std::shared_ptr<const PathManagement::PathItem>>;

  /// What was found when the folder was read.
  struct Contents {
    foundation::storage::vfs::AbsoluteIRI location;           ///< as it was spelled on the path
    foundation::storage::vfs::AbsoluteIRI canonicalLocation;  ///< links resolved
    PathManagement::PathEntryType kind;  ///< Main for a folder of the list, else what its name says
    bool comparesNamesExactly;           ///< how the storage compares names in this folder
    std::vector<std::u16string> files;   ///< full file names, in any order
    SpecialSubfolders subfolders;        ///< read in depth already
    std::vector<PathProblem> problems;   ///< of this folder alone
    FolderProof proof = {};              ///< of this folder alone
  };

  /// An entry that holds just this. O(files x log files).
  [[nodiscard]] static std::shared_ptr<const FolderEntry> Create(Contents contents);
  /// The same, with the names of `packed` for those of `contents`.
  [[nodiscard]] static std::shared_ptr<const FolderEntry> Create(Contents contents, const PackedNames& packed);
  ~FolderEntry() override;

  [[nodiscard]] PathManagement::PathEntryType GetEntryType() const override;

  /// Sorted by full file name, code unit by code unit. Made on demand and shared only as long as somebody holds it.
  /// O(items).
  [[nodiscard]] std::shared_ptr<const Items> GetItems() const override;

  /// Calls `visit` with the base name and the extension of each item, in the same order; the texts are valid until it
  /// returns. Makes no item. O(items).
  void ForEachName(const std::function<void(std::u16string_view, std::u16string_view)>& visit) const;

  [[nodiscard]] foundation::storage::vfs::AbsoluteIRI GetAbsoluteIRI() const override;
  [[nodiscard]] EntryPtr GetPrivateEntry() const override;

  /// The resources subfolder.
  [[nodiscard]] EntryPtr GetSecondSingleEntry() const override;

  /// Class folders, sorted by name.
  [[nodiscard]] EntryGroup GetFirstEntryGroup() const override;
  /// Package folders, sorted by name.
  [[nodiscard]] EntryGroup GetSecondEntryGroup() const override;
  /// Auxiliary folders: a folder on disk has none.
  [[nodiscard]] EntryGroup GetThirdEntryGroup() const override;

  /// The item whose full name is the target's base name followed by one of its extensions, however the two are cut. The
  /// extension that stands first in the list wins; within one extension an exact match wins over one in another letter
  /// case, then the first in name order. An empty base name matches nothing. O(extensions x log items).
  [[nodiscard]] std::shared_ptr<const PathManagement::PathItem> FindFirst(
      const PathManagement::detail::SearchTarget& target, PathManagement::FilenameMatchingPolicy policy) const override;

  /// Every matching item once: by extension in the target's order, then by name.
  [[nodiscard]] Items FindAll(const PathManagement::detail::SearchTarget& target,
                              PathManagement::FilenameMatchingPolicy policy) const;

  /// Order: the entry, private, resources, classes, packages; each followed in depth by its own.
  bool ForEachEntryInScope(PathManagement::SearchScope scope,
                           const PathManagement::PathEntryCallback& callback) const override;

  [[nodiscard]] std::shared_ptr<const PathManagement::FilenameComparator> GetFilenameComparator(
      PathManagement::FilenameMatchingPolicy policy) const override;

  /// The location of GetAbsoluteIRI, without a copy.
  [[nodiscard]] const foundation::storage::vfs::AbsoluteIRI& GetLocation() const noexcept { return location_; }

  /// Where the folder really was when it was read, links resolved.
  [[nodiscard]] const foundation::storage::vfs::AbsoluteIRI& GetCanonicalLocation() const noexcept;

  /// Whether `policy` tells letter cases apart in this folder.
  [[nodiscard]] bool ComparesExactly(PathManagement::FilenameMatchingPolicy policy) const noexcept;

  /// Whether both entries were read from the same place and the same was found there, in depth, problems included.
  /// O(n), but O(1) for what they share.
  [[nodiscard]] bool HoldsTheSameAs(const FolderEntry& other) const;

  /// What went wrong while this folder, not those below it, was read; positions are 0.
  [[nodiscard]] const std::vector<PathProblem>& GetProblems() const noexcept;

  /// What proves that this folder, not those below it, still holds what was found in it.
  [[nodiscard]] std::shared_ptr<const FolderProof> GetProof() const;

  /// Takes over the proofs of `later`, which holds the same and was read after this entry, in depth.
  void RenewProofs(const FolderEntry& later) const;

  /// The entries directly below this one, in walk order.
  [[nodiscard]] const std::vector<std::shared_ptr<const FolderEntry>>& GetChildren() const noexcept;

  /// The names of this folder's files, in the form that a path's index is made over.
  [[nodiscard]] const FolderNames& GetNames() const noexcept;

 private:
  struct State;
  class CreationKey {
    friend class FolderEntry;
    CreationKey() = default;
  };

 public:
  /// For Create alone.
  FolderEntry(CreationKey key, const foundation::storage::vfs::AbsoluteIRI& location,
              std::unique_ptr<const State> state) noexcept;

 private:
  // A lookup that finds something needs the location and nothing else of the entry, so it stands beside the counts.
  foundation::storage::vfs::AbsoluteIRI location_;
  std::unique_ptr<const State> state_;
};

}  // namespace Quorvex::PathEnvironment
