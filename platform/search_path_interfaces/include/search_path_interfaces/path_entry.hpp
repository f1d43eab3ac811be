#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <functional>
#include <memory>
#include <search_path_interfaces/export.hpp>
#include <search_path_interfaces/filename_matching_policy.hpp>
#include <search_path_interfaces/path_entry_type.hpp>
#include <search_path_interfaces/path_item.hpp>
#include <search_path_interfaces/search_scope.hpp>
#include <search_path_interfaces/search_target.hpp>
#include <string>
#include <vector>

namespace Quorvex::PathManagement {

class IPathEntry;

/// Visits one entry; `true` stops the walk.
using PathEntryCallback = std::function<bool(const std::shared_ptr<const IPathEntry>&)>;

/// Compares a wanted text with an item's text.
using FilenameComparator = std::function<bool(const std::u16string&, const std::u16string&)>;

/// One entry of a search path: a folder named on the path (a main entry) or a special subfolder inside one (a method
/// entry).
///
/// Entries are immutable once handed out, held as `std::shared_ptr<const IPathEntry>`, and safe to read from any number
/// of threads. An entry's identity is the object itself: two pointers name the same entry when they point to the same
/// object. The order of the virtual operations is part of the contract: they are called by slot.
class SEARCH_PATH_INTERFACES_EXPORT IPathEntry {
 public:
  virtual ~IPathEntry();

  /// What kind of folder it is; decides which scopes it is in. O(1).
  [[nodiscard]] virtual PathEntryType GetEntryType() const = 0;

  /// The files of the folder, never null.
  [[nodiscard]] virtual std::shared_ptr<const std::vector<std::shared_ptr<const PathItem>>> GetItems() const = 0;

  /// The folder's location.
  [[nodiscard]] virtual foundation::storage::vfs::AbsoluteIRI GetAbsoluteIRI() const = 0;

  /// The entry of the private subfolder; null when there is none.
  [[nodiscard]] virtual std::shared_ptr<const IPathEntry> GetPrivateEntry() const = 0;

  /// The entry's other single method entry, in our paths that of the resources subfolder; null when there is none.
  [[nodiscard]] virtual std::shared_ptr<const IPathEntry> GetSecondSingleEntry() const = 0;

  /// The first of three groups of method entries directly below this entry, in the order of a walk; in our paths the
  /// class folders, by name. Never null.
  [[nodiscard]] virtual std::shared_ptr<const std::vector<std::shared_ptr<const IPathEntry>>> GetFirstEntryGroup()
      const = 0;
  /// The group that follows the first one in a walk, in our paths the packages, by name; never null.
  [[nodiscard]] virtual std::shared_ptr<const std::vector<std::shared_ptr<const IPathEntry>>> GetSecondEntryGroup()
      const = 0;
  /// The last group of a walk, in our paths auxiliary folders; never null.
  [[nodiscard]] virtual std::shared_ptr<const std::vector<std::shared_ptr<const IPathEntry>>> GetThirdEntryGroup()
      const = 0;

  /// The first item of this entry that `target` matches; null when there is none.
  [[nodiscard]] virtual std::shared_ptr<const PathItem> FindFirst(const detail::SearchTarget& target,
                                                                  FilenameMatchingPolicy policy) const = 0;

  /// Visits, of this entry and its method entries in depth, those whose kind is in `scope`, in order. `true` when
  /// `callback` stopped the walk.
  virtual bool ForEachEntryInScope(SearchScope scope, const PathEntryCallback& callback) const = 0;

  /// What compares names in this folder under `policy`. A null handle or an empty function makes a caller fail with
  /// `std::bad_function_call`.
  [[nodiscard]] virtual std::shared_ptr<const FilenameComparator> GetFilenameComparator(
      FilenameMatchingPolicy policy) const = 0;

 protected:
  IPathEntry() = default;
  IPathEntry(const IPathEntry&) = default;
  IPathEntry& operator=(const IPathEntry&) = default;
};

}  // namespace Quorvex::PathManagement
