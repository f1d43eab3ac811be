// From a name to the files on a path that bear it, without a walk.
#pragma once

#define XXH_INLINE_ALL
#include <xxhash.h>

#include <boost/unordered/unordered_flat_map.hpp>
#include <boost/unordered/unordered_flat_set.hpp>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "folder_names.hpp"
#include "large_page_allocator.hpp"
#include "location_table.hpp"

namespace Quorvex::PathEnvironment {

/// Under each base name, in path order, the files of that base name. Keys are handles into the entries' own name
/// tables; the slots given must outlive the index. Immutable, safe from any thread.
class NameIndex {
 public:
  enum class Keys {
    Exact,
    Folded,  ///< names that differ in letter case only share a slot
  };

  /// A file that bears a name.
  struct Posting {
    Ordinal entry;
    std::uint32_t item : 31;              ///< in the entry's name table
    mutable std::uint32_t hasOthers : 1;  ///< set on the first one of a name that others bear, too
  };

  NameIndex(const std::vector<LocationTable::Slot>& slots, Keys keys);
  NameIndex(const NameIndex&) = delete;
  NameIndex& operator=(const NameIndex&) = delete;

  /// The first that bears the base name `name`; null when nothing does. Valid as long as the index. O(1).
  [[nodiscard]] const Posting* FindFirst(std::u16string_view name) const {
    if (keys_ == Keys::Folded) return FindFolded(name);
    const auto found = firsts_.find(name);
    return found == firsts_.end() ? nullptr : &*found;
  }

  /// What else bears the name of `first`, which FindFirst gave, in path order. O(1).
  [[nodiscard]] std::span<const Posting> OthersLike(const Posting& first) const;

 private:
  struct HashName {
    using is_transparent = void;
    using is_avalanching = void;
    const NameIndex* index;
    std::size_t operator()(std::u16string_view key) const noexcept {
      return static_cast<std::size_t>(XXH3_64bits(key.data(), key.size() * sizeof(char16_t)));
    }
    std::size_t operator()(const Posting& first) const;
  };
  struct IsSameName {
    using is_transparent = void;
    const NameIndex* index;
    bool operator()(const Posting& first, std::u16string_view key) const { return index->Bears(first, key); }
    bool operator()(std::u16string_view key, const Posting& first) const { return index->Bears(first, key); }
    bool operator()(const Posting& left, const Posting& right) const;
  };
  struct Row {
    std::uint32_t begin;
    std::uint32_t count;
  };
  using Firsts = boost::unordered_flat_set<Posting, HashName, IsSameName, LargePageAllocator<Posting>>;
  template <class Value>
  using ByFirst = boost::unordered_flat_map<std::uint64_t, Value>;

  void AddFiles(Ordinal ordinal, ByFirst<std::vector<Posting>>& others);
  void Add(Posting posting, ByFirst<std::vector<Posting>>& others);
  void LayOut(const ByFirst<std::vector<Posting>>& others);
  [[nodiscard]] const Posting* FindFolded(std::u16string_view name) const;
  [[nodiscard]] std::u16string KeyOf(const Posting& posting) const;
  template <class Use>
  [[nodiscard]] auto WithKeyOf(const Posting& posting, const Use& use) const;

  [[nodiscard]] bool Bears(const Posting& posting, std::u16string_view key) const {
    const LocationTable::Slot& slot = slots_[posting.entry];
    // That the name is the wanted one is nearly certain here, and then the counts of the entry, which stand before it,
    // and of its location are needed next: fetching them now hides what they cost on a long path.
    __builtin_prefetch(reinterpret_cast<const std::byte*>(slot.entry.get()) - sizeof(std::uint64_t), 1);
    __builtin_prefetch(&slot.location.toString(), 1);
    return keys_ == Keys::Exact ? slot.names.BaseName(posting.item) == key : KeyOf(posting) == key;
  }

  Keys keys_;
  const LocationTable::Slot* slots_;  // by ordinal
  // While the index is made, the names of the entry whose turn it is, in UTF-16, in which names are hashed.
  std::u16string unpacked_;
  Ordinal unpackedEntry_ = kNoOrdinal;
  Firsts firsts_;      // a name is looked up through the first posting that bears it
  ByFirst<Row> rows_;  // where in others_ the rest stands
  std::vector<Posting> others_;
};

}  // namespace Quorvex::PathEnvironment
