#pragma once

#include <boost/range/any_range.hpp>
#include <concepts>
#include <iterator>
#include <type_traits>

namespace Quorvex::PathManagement::detail {

/// What AnyRangeAdapter is made of: iterators that refer to elements, kept without allocation where they are small.
template <class T, class Traversal>
using AnyRange = boost::any_range<T, Traversal, T&, long, boost::any_iterator_buffer<64>>;

// In a scope of their own, so that begin and end are found as a range-based for finds them.
namespace range_access {
using std::begin;
using std::end;

template <class Range>
auto BeginOf(Range& range) -> decltype(begin(range)) {
  return begin(range);
}
template <class Range>
auto EndOf(Range& range) -> decltype(end(range)) {
  return end(range);
}
}  // namespace range_access

/// A range whose iterators refer to elements of type T that exist elsewhere, and end as they begin. A view that makes
/// its values as it goes has nothing to refer to.
template <class Range, class T>
concept RangeOver = requires(Range& range) {
  { *range_access::BeginOf(range) } -> std::convertible_to<const T&>;
  requires std::is_lvalue_reference_v<decltype(*range_access::BeginOf(range))>;
  requires std::same_as<std::remove_cvref_t<decltype(*range_access::BeginOf(range))>, T>;
  requires std::same_as<decltype(range_access::BeginOf(range)), decltype(range_access::EndOf(range))>;
};

/// A sequence of existing values of type T behind one type: any container, or a lazily computed view that selects among
/// them.
///
/// Passed down only: it holds iterators into the source, which must outlive it (rvalue sources are refused) and must
/// not change meanwhile. The reference type is `T&` also over a const source, whose const the type erasure takes away:
/// a receiver reads and never writes through it. A view that caches its begin must not be shared between threads.
template <class T, class Traversal = boost::forward_traversal_tag>
class AnyRangeAdapter : public AnyRange<T, Traversal> {
 public:
  /// Takes iterators into `range`, which must outlive this one. O(1).
  template <class Range>
  requires(!std::is_base_of_v<AnyRangeAdapter, std::remove_cv_t<Range>> && RangeOver<Range, T>)
      // NOLINTNEXTLINE(google-explicit-constructor): callers pass their containers as they are.
      AnyRangeAdapter(Range& range)
      : AnyRange<T, Traversal>(range_access::BeginOf(range), range_access::EndOf(range)) {}

  template <class Range>
  requires(!std::is_base_of_v<AnyRangeAdapter, std::remove_cv_t<Range>> && !std::is_lvalue_reference_v<Range>)
      AnyRangeAdapter(Range&& range)
  = delete;
};

}  // namespace Quorvex::PathManagement::detail
