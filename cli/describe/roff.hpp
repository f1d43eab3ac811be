#pragma once

#include <string>
#include <string_view>

namespace vornixpath {

/// `text`, one line, as roff shows it literally: at the beginning of a line, within one, and between the quotation
/// marks of a macro's argument.
[[nodiscard]] std::string Roff(std::string_view text);

/// The same in lines of at most 80 bytes, as far as words allow; empty, or ended by a line break. Each space of `text`
/// is one at which it may be broken.
[[nodiscard]] std::string RoffLines(const std::string& text);

}  // namespace vornixpath
