#pragma once

#include <memory>
#include <utility>

#include "position.hpp"

namespace Quorvex::PathManagement::detail {

/// One link of a candidate subsequence, shared by the candidates that extend it.
struct IndexNode {
  SequencePosition index;               ///< in the first sequence
  std::shared_ptr<IndexNode> previous;  ///< the element before it in the candidate; null for the first

  IndexNode(SequencePosition position, std::shared_ptr<IndexNode> before)
      : index(position), previous(std::move(before)) {}
  IndexNode(const IndexNode&) = delete;
  IndexNode& operator=(const IndexNode&) = delete;

  /// In a loop: a chain of a million links, each releasing the next, would overflow the stack.
  ~IndexNode() {
    std::shared_ptr<IndexNode> last = std::move(previous);
    while (last && last.use_count() == 1) last = std::move(last->previous);
  }
};

}  // namespace Quorvex::PathManagement::detail
