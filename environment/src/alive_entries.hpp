#pragma once

#include <boost/unordered/unordered_flat_map.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <memory>
#include <mutex>
#include <search_path_environment/folder_entry.hpp>
#include <vector>

namespace Quorvex::PathEnvironment {

/// The main entries that somebody still holds, by location, so that a folder that is read again and has not changed
/// keeps its entry. Safe from any thread.
class AliveEntries {
 public:
  using EntryPtr = std::shared_ptr<const FolderEntry>;

  /// Null when nobody holds an entry of `location` that was settled here.
  [[nodiscard]] EntryPtr Find(const foundation::storage::vfs::AbsoluteIRI& location) const;

  /// The entry to go on with: the one that is known for the location if it holds the same, else `entry`, which is known
  /// from now on. O(1), but for every now and then, when what nobody holds is swept out.
  EntryPtr Settle(EntryPtr entry);

  /// The entries that somebody holds, in no order.
  [[nodiscard]] std::vector<EntryPtr> GetAll() const;

  /// How many locations are known, those of dead entries that were not yet swept out included.
  [[nodiscard]] std::size_t GetSize() const;

 private:
  static constexpr std::size_t kFewestToSweep = 64;

  void SweepOutTheDead();

  mutable std::mutex mutex_;
  boost::unordered_flat_map<foundation::storage::vfs::AbsoluteIRI, std::weak_ptr<const FolderEntry>> entries_;
  std::size_t sizeToSweepAt_ = kFewestToSweep;
};

}  // namespace Quorvex::PathEnvironment
