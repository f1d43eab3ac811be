// From a name to the places on a path that bear it, without a walk.
#pragma once

#include <boost/unordered/unordered_flat_map.hpp>
#include <boost/unordered/unordered_flat_set.hpp>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "class_name_filter.hpp"
#include "folder_names.hpp"
#include "location_table.hpp"

namespace Quorvex::PathEnvironment {

/// Under each base name, in path order: the files of that base name, and the class folders of that name.
///
/// Both stand in one table, so that the two questions of a lookup meet the same slot. Keys are handles into the
/// entries' own name tables; the entries of the slots given must outlive the index. Immutable, safe from any thread.
class NameIndex {
 public:
  enum class Keys {
    Exact,
    Folded,  ///< names that differ in letter case only share a slot
  };

  static constexpr std::uint32_t kClassFolder = 0x7FFFFFFF;

  /// A file, or a class folder, that bears a name.
  struct Posting {
    Ordinal entry;
    std::uint32_t item : 31;              ///< in the entry's name table, or kClassFolder
    mutable std::uint32_t hasOthers : 1;  ///< set on the first one of a name that others bear, too

    [[nodiscard]] bool IsClassFolder() const noexcept { return item == kClassFolder; }
  };

  NameIndex(const std::vector<LocationTable::Slot>& slots, Keys keys);
  NameIndex(const NameIndex&) = delete;
  NameIndex& operator=(const NameIndex&) = delete;

  /// The first that bears `name`, a base name or the name of a class without '@'; null when nothing does. Valid as
  /// long as the index. O(1).
  [[nodiscard]] const Posting* FindFirst(std::u16string_view name) const;

  /// What else bears the name of `first`, which FindFirst gave, in path order. O(1).
  [[nodiscard]] std::span<const Posting> OthersLike(const Posting& first) const;

  /// False when surely no class folder bears `name`: most names cost no hash to find that out.
  [[nodiscard]] bool MayHoldClassFolder(std::u16string_view name) const noexcept {
    return keys_ == Keys::Folded || classNameFilter_.MayHold(name);
  }

  /// The names of the files in the folder of an entry.
  [[nodiscard]] const FolderNames::View& NamesOf(Ordinal ordinal) const { return names_[ordinal]; }

 private:
  struct HashSlot {
    using is_transparent = void;
    using is_avalanching = void;
    const NameIndex* index;
    std::size_t operator()(const Posting& first) const;
    std::size_t operator()(std::u16string_view key) const;
  };
  struct EqualSlots {
    using is_transparent = void;
    const NameIndex* index;
    bool operator()(const Posting& left, const Posting& right) const;
    bool operator()(const Posting& first, std::u16string_view key) const;
    bool operator()(std::u16string_view key, const Posting& first) const;
  };
  struct Row {
    std::uint32_t begin;
    std::uint32_t count;
  };
  using Firsts = boost::unordered_flat_set<Posting, HashSlot, EqualSlots>;
  template <class Value>
  using ByFirst = boost::unordered_flat_map<std::uint64_t, Value>;

  void AddFiles(Ordinal ordinal, ByFirst<std::vector<Posting>>& others);
  void Add(Posting posting, ByFirst<std::vector<Posting>>& others);
  void LayOut(const ByFirst<std::vector<Posting>>& others);
  template <class Use>
  [[nodiscard]] auto WithNameOf(const Posting& posting, const Use& use) const;

  Keys keys_;
  std::vector<FolderNames::View> names_;                           // by ordinal
  boost::unordered_flat_map<Ordinal, std::u16string> classNames_;  // of class folders
  ClassNameFilter classNameFilter_;
  Firsts firsts_;      // a name is looked up through the first posting that bears it
  ByFirst<Row> rows_;  // where in others_ the rest stands
  std::vector<Posting> others_;
};

}  // namespace Quorvex::PathEnvironment
