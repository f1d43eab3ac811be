#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "candidate_links.hpp"
#include "occurrence_index.hpp"
#include "position.hpp"

namespace Quorvex::PathManagement::detail {

/// A longest common subsequence of two sequences of shared pointers; elements match when they point to the same object.
///
/// After Hunt and Szymanski: the work grows with the number of pairs of positions that match, times the logarithm of
/// the subsequence's length. Of several longest ones, that is given which the scan yields: the first sequence in order,
/// each element's positions in the second in descending order, and a candidate replaced whenever another of the same
/// length ends at a smaller position.
template <class Element, class Container = std::vector<Element>>
class LongestCommonSubsequence {
 public:
  using Index = OccurrenceIndex<Container>;

  /// Copies of elements of `first`, in its order.
  [[nodiscard]] static Container Find(const Container& first, const Container& second) {
    const Index index(second);
    std::vector<SequencePosition> matchLists = index.MatchListsOf(first);
    if (index.HasRepeats()) return LongestOf(ScanAll(index, matchLists), first);
    return LongestOf(ScanUnique(std::move(matchLists)), first);
  }

  /// The candidates after the scan, where no element of the second sequence repeats.
  [[nodiscard]] static LinksByPosition ScanUnique(std::vector<SequencePosition> matchLists) {
    LinksByPosition links(std::move(matchLists));
    std::vector<SequencePosition> thresholds;
    for (SequencePosition i = 0; i < links.GetLength(); ++i) {
      const SequencePosition p = links.MatchOf(i);
      if (p != kNowhere) Consider(i, p, thresholds, links);
    }
    return links;
  }

 private:
  template <class Links>
  static Container LongestOf(const Links& links, const Container& first) {
    Container subsequence;
    subsequence.reserve(links.LengthOfLongest());
    links.ForEachBackwards([&](SequencePosition position) { subsequence.push_back(first[position]); });
    std::reverse(subsequence.begin(), subsequence.end());
    return subsequence;
  }

  static SharedLinks ScanAll(const Index& index, const std::vector<SequencePosition>& matchLists) {
    SharedLinks links;
    std::vector<SequencePosition> thresholds;
    for (SequencePosition i = 0; i < matchLists.size(); ++i) {
      // Descending, so that an element does not extend its own candidate.
      for (SequencePosition p = matchLists[i]; p != kNowhere; p = index.PreviousOf(p)) {
        Consider(i, p, thresholds, links);
      }
    }
    return links;
  }

  // `thresholds[k]` is the smallest position in the second sequence at which a candidate of length k + 1 ends.
  template <class Links>
  static void Consider(SequencePosition i, SequencePosition p, std::vector<SequencePosition>& thresholds,
                       Links& links) {
    const bool extendsTheLongest = thresholds.empty() || thresholds.back() < p;
    const auto threshold =
        extendsTheLongest ? thresholds.end() : std::lower_bound(thresholds.begin(), thresholds.end(), p);
    const auto rank = static_cast<std::size_t>(threshold - thresholds.begin());

    if (extendsTheLongest) {
      thresholds.push_back(p);
    } else if (p < *threshold) {
      *threshold = p;
    } else {
      return;
    }
    links.Put(rank, i);
  }
};

}  // namespace Quorvex::PathManagement::detail
