// From a name to the entries of a path that hold it, without a walk.
#pragma once

#include <boost/unordered/unordered_flat_set.hpp>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "location_table.hpp"

namespace Quorvex::PathEnvironment {

/// Under each base name, in path order: the entries that hold a file of that base name, and the class folders of that
/// name.
///
/// Both stand in one table, so that the two questions of a lookup meet the same slot. Keys are handles into the
/// entries' own name tables; the slots given must outlive the index. Immutable, safe from any thread.
class NameIndex {
 public:
  enum class Keys {
    Exact,
    Folded,  ///< names that differ in letter case only share a slot
  };

  NameIndex(const std::vector<LocationTable::Slot>& slots, Keys keys);
  NameIndex(const NameIndex&) = delete;
  NameIndex& operator=(const NameIndex&) = delete;

  /// Visits the ordinals of the entries that hold a file of this base name, each once, in path order, until `visit`
  /// returns true. True when it did.
  template <class Visit>
  bool ForEachHolderOf(std::u16string_view baseName, const Visit& visit) const {
    Ordinal last = kNoOrdinal;
    for (PostingNumber number = FirstPosting(baseName); number != kNoPosting; number = postings_[number].next) {
      const Posting& posting = postings_[number];
      if (posting.item == kClassFolder || posting.entry == last) continue;
      last = posting.entry;
      if (visit(posting.entry)) return true;
    }
    return false;
  }

  /// Visits the ordinals of the class folders of this name, written without '@', in path order.
  template <class Visit>
  void ForEachClassFolder(std::u16string_view name, const Visit& visit) const {
    for (PostingNumber number = FirstPosting(name); number != kNoPosting; number = postings_[number].next) {
      if (postings_[number].item == kClassFolder) visit(postings_[number].entry);
    }
  }

 private:
  using PostingNumber = std::uint32_t;
  static constexpr PostingNumber kNoPosting = 0xFFFFFFFF;
  static constexpr std::uint32_t kClassFolder = 0xFFFFFFFF;

  struct Posting {
    Ordinal entry;
    std::uint32_t item;  // in the entry's name table, or kClassFolder
    PostingNumber next;  // of the same name
  };

  // A slot is the number of the first posting of a name, and the name is looked up through it.
  struct Slot {
    mutable PostingNumber first;
  };
  struct HashSlot {
    using is_transparent = void;
    using is_avalanching = void;
    const NameIndex* index;
    std::size_t operator()(const Slot& slot) const;
    std::size_t operator()(std::u16string_view key) const;
  };
  struct EqualSlots {
    using is_transparent = void;
    const NameIndex* index;
    bool operator()(const Slot& left, const Slot& right) const;
    bool operator()(const Slot& slot, std::u16string_view key) const;
    bool operator()(std::u16string_view key, const Slot& slot) const;
  };

  using Slots = boost::unordered_flat_set<Slot, HashSlot, EqualSlots>;

  void AddEntry(Ordinal ordinal);
  void AddPosting(Ordinal ordinal, std::uint32_t item, std::u16string_view name);
  [[nodiscard]] Slots::const_iterator FindSlot(std::u16string_view name) const;
  [[nodiscard]] PostingNumber FirstPosting(std::u16string_view name) const;
  [[nodiscard]] std::u16string_view NameOf(const Posting& posting) const;
  [[nodiscard]] std::size_t CountNames() const;

  const std::vector<LocationTable::Slot>& entries_;
  Keys keys_;
  std::vector<std::u16string> classNames_;  // by ordinal; empty for other kinds
  std::vector<Posting> postings_;
  Slots slots_;
};

}  // namespace Quorvex::PathEnvironment
