// The entries of a toolbox cache: which there are, whether their folders are still as they were, and the objects that
// they become when somebody asks.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <foundation/storage/vfs/storage_system.hpp>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <search_path_environment/distinct_folders.hpp>
#include <search_path_environment/folder_entry.hpp>
#include <search_path_environment/folder_proof.hpp>
#include <search_path_environment/toolbox_cache.hpp>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "cache_image.hpp"
#include "lazy.hpp"

namespace Quorvex::PathEnvironment {

/// The records of one file. Whatever the bytes are, each question is answered from bytes as they were written, or
/// throws ToolboxCacheError. Safe from any thread.
class CacheRecords {
 public:
  using EntryPtr = std::shared_ptr<const FolderEntry>;
  using AbsoluteIRI = foundation::storage::vfs::AbsoluteIRI;

  CacheRecords(CacheImage image, foundation::storage::vfs::StorageSystemReference storage, CacheTrust trust);
  CacheRecords(const CacheRecords&) = delete;
  CacheRecords& operator=(const CacheRecords&) = delete;
  ~CacheRecords();

  [[nodiscard]] const CacheImage& GetImage() const noexcept { return image_; }
  [[nodiscard]] const foundation::storage::vfs::StorageSystemReference& GetStorage() const noexcept { return storage_; }
  [[nodiscard]] CacheTrust GetTrust() const noexcept { return trust_; }
  [[nodiscard]] const AbsoluteIRI& GetRoot() const noexcept { return root_; }

  /// Main entries are counted from 0, in path order; all entries have ordinals, in walk order.
  [[nodiscard]] std::size_t CountOfMains() const noexcept { return countOfMains_; }
  [[nodiscard]] std::size_t CountOfEntries() const noexcept {
    return image_.CountOf<cache::EntryRow>(cache::Section::Entries);
  }

  [[nodiscard]] AbsoluteIRI LocationOfMain(std::size_t main) const;
  /// The place of the main entry with this location. O(1), but O(mains) for the first call.
  [[nodiscard]] std::optional<std::size_t> FindMain(const AbsoluteIRI& location) const;
  /// The main entry that the entry belongs to. O(log mains).
  [[nodiscard]] std::size_t MainOf(std::uint32_t ordinal) const;
  [[nodiscard]] std::uint32_t OrdinalOfMain(std::size_t main) const { return ExtentOf(main).first; }
  [[nodiscard]] const cache::EntryRow& RowOf(std::uint32_t ordinal) const;

  /// How the folder of a main entry, with those below it, stands to what was recorded: what the worst of them is, but
  /// that folders below can be no worse than changed.
  [[nodiscard]] Standing StandingOfMain(std::size_t main) const;
  /// Whether it can be anything but changed.
  [[nodiscard]] bool CanBeProven(std::size_t main) const;

  /// The main entry with all that is below it; made by the first call, and the same object ever after. What its
  /// canonical location is, storage is asked, unless it is to be trusted blindly.
  [[nodiscard]] EntryPtr MainEntry(std::size_t main) const;
  /// The entry itself, by way of its main entry.
  [[nodiscard]] EntryPtr Entry(std::uint32_t ordinal) const;

  /// The ordinal of an object that was made here.
  [[nodiscard]] std::optional<std::uint32_t> OrdinalOf(const PathManagement::IPathEntry& entry) const;

  /// The main entries that were made so far.
  [[nodiscard]] std::vector<EntryPtr> EntriesMade() const;

  /// Adds the problems recorded with the entries of a main entry, in walk order, as those of `position`.
  void AddProblemsOfMain(std::size_t main, std::size_t position, std::vector<PathProblem>& problems) const;

 private:
  // A main entry and those below it, which it keeps.
  struct Branch {
    std::vector<EntryPtr> entries;  // by ordinal, from the main entry's on
  };
  struct Extent {
    std::uint32_t first;
    std::uint32_t count;
  };

  [[nodiscard]] Extent ExtentOf(std::size_t main) const;
  [[nodiscard]] std::vector<AbsoluteIRI> LocationsOf(std::size_t main, std::span<const cache::EntryRow> rows) const;
  [[nodiscard]] FolderProof ProofOf(const cache::EntryRow& row) const;
  [[nodiscard]] std::vector<PathProblem> ProblemsOf(const cache::EntryRow& row) const;
  [[nodiscard]] bool IsMissingElsewhere(const cache::EntryRow& row, const AbsoluteIRI& location,
                                        const foundation::storage::vfs::IStorageProvider& storage) const;
  [[nodiscard]] std::unique_ptr<const Branch> MakeBranch(std::size_t main) const;
  [[nodiscard]] EntryPtr MakeEntry(const cache::EntryRow& row, const AbsoluteIRI& location,
                                   const AbsoluteIRI& canonical, SpecialSubfolders subfolders) const;
  [[nodiscard]] AbsoluteIRI CanonicalOf(const cache::EntryRow& row, const AbsoluteIRI& location,
                                        const AbsoluteIRI* parentsCanonical) const;
  [[nodiscard]] const Branch& BranchOf(std::size_t main) const;

  CacheImage image_;
  foundation::storage::vfs::StorageSystemReference storage_;
  CacheTrust trust_;
  AbsoluteIRI root_;
  std::string rootPrefix_;
  std::size_t countOfMains_;
  // NOLINTNEXTLINE(modernize-avoid-c-arrays): its length is the file's business
  std::unique_ptr<std::atomic<const Branch*>[]> branches_;
  mutable std::mutex ordinalsMutex_;
  mutable std::unordered_map<const PathManagement::IPathEntry*, std::uint32_t> ordinals_;
  Lazy<std::unordered_map<AbsoluteIRI, std::size_t>> byLocation_;
};

}  // namespace Quorvex::PathEnvironment
