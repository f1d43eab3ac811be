#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "position.hpp"

namespace Quorvex::PathManagement::detail {

/// Where the elements of a sequence of shared pointers occur in it, by the address of the object they point to.
///
/// The queue of an element's positions runs from the last to the first: `LastOf`, then `PreviousOf` until nowhere. It
/// is a chain through one vector, and that vector is only there when some element repeats.
template <class Container>
class OccurrenceIndex {
 public:
  using Element = typename Container::value_type;

  /// Keeps a reference to `sequence`, which must neither change nor go. O(n) on average.
  explicit OccurrenceIndex(const Container& sequence)
      : sequence_(sequence), slots_(SlotsFor(LengthInPositions(sequence.size())), kNowhere) {
    for (SequencePosition position = 0; position < sequence.size(); ++position) {
      PrefetchAhead(sequence, position);
      Insert(position);
    }
  }

  [[nodiscard]] bool HasRepeats() const noexcept { return !previous_.empty(); }

  [[nodiscard]] SequencePosition LastOf(const Element& element) const {
    const SequencePosition content = slots_[SlotOf(element)];
    return content == kNowhere ? kNowhere : content & positionBits_;
  }

  [[nodiscard]] SequencePosition PreviousOf(SequencePosition position) const {
    return HasRepeats() ? previous_[position] : kNowhere;
  }

  /// For each element of `first`, in order, the head of its queue.
  [[nodiscard]] std::vector<SequencePosition> MatchListsOf(const Container& first) const {
    std::vector<SequencePosition> heads(LengthInPositions(first.size()));
    SequencePosition guess = 0;
    bool isGuessRight = true;
    for (std::size_t position = 0; position < first.size(); ++position) {
      if (!isGuessRight) PrefetchAhead(first, position);
      isGuessRight = IsOnlyAt(guess, first[position]);
      heads[position] = isGuessRight ? guess : LastOf(first[position]);
      if (heads[position] != kNowhere) guess = heads[position] + 1;
    }
    return heads;
  }

 private:
  // How many elements ahead of its use a slot is asked for. The table is larger than the caches, and its slots are
  // visited in no order.
  static constexpr std::size_t kAhead = 16;

  // At most half of the slots are taken, so that a search ends soon.
  static std::size_t SlotsFor(std::size_t length) { return std::bit_ceil(std::max<std::size_t>(2 * length, 2)); }

  void PrefetchAhead(const Container& sequence, std::size_t position) const {
    if (position + kAhead < sequence.size())
      __builtin_prefetch(&slots_[FirstSlotFor(HashOf(sequence[position + kAhead]))]);
  }

  // Sequences that are compared are mostly alike: the successor of the last match needs no search.
  [[nodiscard]] bool IsOnlyAt(SequencePosition guess, const Element& element) const {
    return !HasRepeats() && guess < sequence_.size() && sequence_[guess].get() == element.get();
  }

  // The higher a bit of the product, the more bits of the address have a part in it.
  static std::uint64_t HashOf(const Element& element) {
    constexpr std::uint64_t kGoldenRatio = 0x9E3779B97F4A7C15;
    return reinterpret_cast<std::uintptr_t>(element.get()) * kGoldenRatio;
  }

  [[nodiscard]] std::size_t FirstSlotFor(std::uint64_t hash) const { return hash >> shift_; }

  // The bits of a slot that its position leaves free. They tell most strangers apart without a look at the sequence.
  [[nodiscard]] SequencePosition MarkFor(std::uint64_t hash) const {
    return static_cast<SequencePosition>(hash >> kMarkShift) & ~positionBits_;
  }

  // The slot that the element has, or would get.
  [[nodiscard]] std::size_t SlotOf(const Element& element) const {
    const std::uint64_t hash = HashOf(element);
    const SequencePosition mark = MarkFor(hash);
    std::size_t slot = FirstSlotFor(hash);
    while (slots_[slot] != kNowhere && !Holds(slots_[slot], mark, element)) slot = (slot + 1) & (slots_.size() - 1);
    return slot;
  }

  [[nodiscard]] bool Holds(SequencePosition content, SequencePosition mark, const Element& element) const {
    return (content & ~positionBits_) == mark && sequence_[content & positionBits_].get() == element.get();
  }

  void Insert(SequencePosition position) {
    SequencePosition& content = slots_[SlotOf(sequence_[position])];
    if (content != kNowhere) {
      if (previous_.empty()) previous_.assign(sequence_.size(), kNowhere);
      previous_[position] = content & positionBits_;
    }
    content = MarkFor(HashOf(sequence_[position])) | position;
  }

  // So a mark ends with bit 42 of the hash: above it are the bits that choose one of 2^21 slots, those of a million
  // elements. In longer sequences both share some bits, and a mark tells less.
  static constexpr int kMarkShift = 11;

  const Container& sequence_;
  // The last position of an element in the low bits, its mark in the others. All bits are set where there is none: no
  // position has all of its bits set.
  std::vector<SequencePosition> slots_;
  int shift_ = 64 - std::countr_zero(slots_.size());
  SequencePosition positionBits_ =
      static_cast<SequencePosition>(std::bit_ceil(std::uint64_t{sequence_.size()} + 1) - 1);
  std::vector<SequencePosition> previous_;  // for each position, that of the same element before it
};

}  // namespace Quorvex::PathManagement::detail
