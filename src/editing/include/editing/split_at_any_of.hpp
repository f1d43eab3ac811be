#pragma once

#include <boost/tokenizer.hpp>
#include <string>

namespace Quorvex::PathManagement::detail {

/// The maximal runs of characters of `text` that are not in `separators`, in order, as a `Container` of texts, or of
/// views into `text` that are assigned from two of its iterators. No element is empty; blanks and punctuation are
/// ordinary characters.
template <class Container>
[[nodiscard]] Container SplitAtAnyOf(const std::u16string& text, const std::u16string& separators) {
  boost::char_separator<char16_t> tokenize(separators.c_str());
  Container parts;
  typename Container::value_type part;
  for (auto next = text.begin(); tokenize(next, text.end(), part);) parts.push_back(part);
  return parts;
}

}  // namespace Quorvex::PathManagement::detail
