#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <string>
#include <string_view>

namespace vornixpath {

/// `text`, which is safe for a terminal, as it is written into HTML: as content, or as an attribute in quotation marks.
/// Nothing in it is taken for a tag, a reference or the end of an attribute.
[[nodiscard]] std::string HtmlText(std::string_view text);

/// The same of a text from disk, shown as everywhere else.
[[nodiscard]] std::string HtmlText(std::u16string_view text);

/// The same of a location, as content: a line may end before each of its names, and is not broken within one.
[[nodiscard]] std::string HtmlPath(const foundation::storage::vfs::AbsoluteIRI& location);

}  // namespace vornixpath
