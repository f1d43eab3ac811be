#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vornixpath {

/// `text` in UTF-8, with stray bytes and whatever a terminal would act on percent-encoded: for texts in which '%' is
/// part of an escape already. Throws fl::filesystem::encoding_error for a text that stands for no bytes; names from
/// disk never do.
[[nodiscard]] std::string WithoutDanger(std::u16string_view text);

/// The same with '%' percent-encoded, too, so that it can be decoded.
[[nodiscard]] std::string EncodedText(std::u16string_view text);

/// The text that was encoded; nothing for one with a malformed escape.
[[nodiscard]] std::optional<std::u16string> DecodedText(std::string_view encoded);

}  // namespace vornixpath
