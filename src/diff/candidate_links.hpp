// Two ways to keep the ends of the best candidates, one for each length. Both answer alike.
#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "index_node.hpp"
#include "position.hpp"

namespace Quorvex::PathManagement::detail {

/// Links that candidates share. A link goes when no candidate holds it any more, so that a sequence full of repeats
/// keeps but a few of the links it makes.
class SharedLinks {
 public:
  /// Ends the candidate of length `rank` + 1 with `index`, after what is now the best candidate of length `rank`.
  void Put(std::size_t rank, SequencePosition index) {
    auto node = std::make_shared<IndexNode>(index, rank == 0 ? nullptr : links_[rank - 1]);
    if (rank == links_.size()) return links_.push_back(std::move(node));
    links_[rank] = std::move(node);
  }

  [[nodiscard]] std::size_t LengthOfLongest() const noexcept { return links_.size(); }

  /// Calls `visit` with each position of the longest candidate, from its last to its first.
  template <class Visit>
  void ForEachBackwards(const Visit& visit) const {
    if (links_.empty()) return;
    for (const IndexNode* node = links_.back().get(); node != nullptr; node = node->previous.get()) visit(node->index);
  }

 private:
  std::vector<std::shared_ptr<IndexNode>> links_;
};

/// The same where no element of the second sequence repeats: a position of the first has one match at most and is
/// linked once at most. Its place in a vector is its link; that place holds the match until then, and the position
/// before it in the candidate from then on.
class LinksByPosition {
 public:
  explicit LinksByPosition(std::vector<SequencePosition> matchLists) : places_(std::move(matchLists)) {}

  [[nodiscard]] SequencePosition GetLength() const noexcept { return static_cast<SequencePosition>(places_.size()); }

  /// Only for an `index` that was not put yet.
  [[nodiscard]] SequencePosition MatchOf(SequencePosition index) const { return places_[index]; }

  void Put(std::size_t rank, SequencePosition index) {
    places_[index] = rank == 0 ? kNowhere : links_[rank - 1];
    if (rank == links_.size()) return links_.push_back(index);
    links_[rank] = index;
  }

  [[nodiscard]] std::size_t LengthOfLongest() const noexcept { return links_.size(); }

  template <class Visit>
  void ForEachBackwards(const Visit& visit) const {
    if (links_.empty()) return;
    for (SequencePosition index = links_.back(); index != kNowhere; index = places_[index]) visit(index);
  }

 private:
  std::vector<SequencePosition> links_;
  std::vector<SequencePosition> places_;
};

}  // namespace Quorvex::PathManagement::detail
