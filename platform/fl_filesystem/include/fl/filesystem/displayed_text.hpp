// Text from disk made safe for terminals, logs and messages. Pure, safe from any thread; no storage is touched.
#pragma once

#include <fl/filesystem/export.hpp>
#include <string>
#include <string_view>

namespace fl::filesystem {

/// `text` as UTF-8 in which nothing can move a cursor, end a line or turn the direction of writing.
///
/// Control characters (C0, DEL, C1), bidirectional controls, U+2028, U+2029, U+FEFF and lone surrogates appear as
/// `\u{1B}`, a stray byte (lone U+DC80 to U+DCFF) as `\xFF`, and a backslash as `\\`, so that two different texts
/// never look alike through an escape. Accepts any text. O(n).
[[nodiscard]] FL_FILESYSTEM_EXPORT std::string to_displayed_text(std::u16string_view text);

}  // namespace fl::filesystem
