#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <stdexcept>

namespace Quorvex::PathManagement::detail {

/// Where an element stands in a sequence, counted from 0.
using SequencePosition = std::uint32_t;

/// The position of what is not there.
inline constexpr SequencePosition kNowhere = std::numeric_limits<SequencePosition>::max();

/// The length of a sequence all of whose positions can be told; throws std::length_error for a longer one.
inline SequencePosition LengthInPositions(std::size_t length) {
  if (length >= kNowhere) throw std::length_error("a sequence is too long to be compared");
  return static_cast<SequencePosition>(length);
}

}  // namespace Quorvex::PathManagement::detail
