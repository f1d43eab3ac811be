#include <foundation/storage/utility/url.hpp>
#include <foundation/storage/vfs/exception.hpp>

#include "storage/vfs/identifier_text.hpp"

namespace foundation::storage::utility {

namespace {

std::u16string NormalTextOf(const std::u16string& url) {
  try {
    return vfs::detail::Normalize(url).text;
  } catch (const vfs::Exception&) {
    return url;
  }
}

}  // namespace

void normalizeURL(std::u16string& url) { url = NormalTextOf(url); }

void decodeURL(std::u16string& url) { url = vfs::detail::DecodeEscapes(url); }

}  // namespace foundation::storage::utility
