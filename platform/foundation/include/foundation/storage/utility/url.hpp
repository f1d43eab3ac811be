// Helpers on URL texts, in place. Pure functions, safe from any thread; no storage is touched. Both throw only
// std::bad_alloc.
#pragma once

#include <foundation/export.hpp>
#include <string>

namespace foundation::storage::utility {

/// Brings `url` to the normal form of vfs::AbsoluteIRI; leaves it unchanged when it is no identifier. Idempotent.
/// O(n).
FOUNDATION_EXPORT void normalizeURL(std::u16string& url);

/// Decodes the escapes of `url`: adjacent ones as one run of bytes, bytes that are not UTF-8 as lone low surrogates. A
/// malformed escape stays as it is. O(n).
FOUNDATION_EXPORT void decodeURL(std::u16string& url);

}  // namespace foundation::storage::utility
