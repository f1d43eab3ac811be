#pragma once

// A longest common subsequence, by the steps that define which one it is: slow, obvious, and written apart from the
// library.

#include <algorithm>
#include <cstdint>
#include <deque>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

namespace Quorvex::PathManagement::oracle {

struct SubsequenceLink {
  std::uint32_t index;
  std::shared_ptr<SubsequenceLink> previous;
};

/// Copies of elements of `first`, a vector of shared pointers. For sequences of some thousand elements: longer chains
/// of links overflow the stack when they go.
template <class Sequence>
Sequence LongestCommonSubsequence(const Sequence& first, const Sequence& second) {
  using Queue = std::deque<std::uint32_t>;
  std::unordered_map<typename Sequence::value_type, Queue> occurrences;
  for (std::uint32_t j = 0; j < second.size(); ++j) occurrences[second[j]].push_front(j);

  std::vector<const Queue*> matchLists;
  for (const auto& element : first) matchLists.push_back(&occurrences[element]);

  std::vector<std::uint32_t> thresholds;
  std::vector<std::shared_ptr<SubsequenceLink>> links;
  for (std::uint32_t i = 0; i < first.size(); ++i) {
    for (const std::uint32_t p : *matchLists[i]) {
      std::size_t k = 0;
      while (k < thresholds.size() && thresholds[k] < p) ++k;

      const auto link = std::make_shared<SubsequenceLink>(SubsequenceLink{i, k == 0 ? nullptr : links[k - 1]});
      if (k == thresholds.size()) {
        thresholds.push_back(p);
        links.push_back(link);
      } else if (p < thresholds[k]) {
        thresholds[k] = p;
        links[k] = link;
      }
    }
  }

  Sequence subsequence;
  if (links.empty()) return subsequence;
  for (auto link = links.back(); link; link = link->previous) subsequence.push_back(first[link->index]);
  std::reverse(subsequence.begin(), subsequence.end());
  return subsequence;
}

}  // namespace Quorvex::PathManagement::oracle
