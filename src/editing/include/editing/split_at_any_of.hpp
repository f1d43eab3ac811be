#pragma once

#include <boost/tokenizer.hpp>
#include <string>

namespace Quorvex::PathManagement::detail {

/// The maximal runs of characters of `text` that are not in `separators`, in order, as a `Container` of texts. No
/// element is empty; blanks and punctuation are ordinary characters.
template <class Container>
[[nodiscard]] Container SplitAtAnyOf(const std::u16string& text, const std::u16string& separators) {
  using Separator = boost::char_separator<char16_t>;
  using Tokenizer = boost::tokenizer<Separator, std::u16string::const_iterator, std::u16string>;

  Container parts;
  for (const std::u16string& part : Tokenizer(text, Separator(separators.c_str()))) parts.push_back(part);
  return parts;
}

}  // namespace Quorvex::PathManagement::detail
