// Names without their letter case. Pure, safe from any thread; no storage is touched.
#pragma once

#include <fl/filesystem/export.hpp>
#include <string>
#include <string_view>

namespace fl::filesystem {

/// `text` under Unicode's full default case folding, without normal forms: texts that fold alike differ in letter case
/// only. Lone surrogates, which stand for stray bytes, stay as they are. The length may change, up to threefold.
///
/// Throws std::length_error for more than 2^29 code units. O(n).
[[nodiscard]] FL_FILESYSTEM_EXPORT std::u16string fold_case(std::u16string_view text);

}  // namespace fl::filesystem
