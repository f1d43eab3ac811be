// Identifiers and URL texts from any bytes: the normal form is its own normal form, names and parents agree with it,
// and nothing but storage's exception comes out.
#include <cstddef>
#include <cstdint>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/utility/url.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <foundation/storage/vfs/iri_conversion.hpp>
#include <optional>
#include <string>

#include "require.hpp"

namespace {

using fl::filesystem::detail::path_style;
using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::Exception;

std::optional<AbsoluteIRI> Parse(const std::u16string& text) {
  try {
    return AbsoluteIRI(text);
  } catch (const Exception& problem) {
    Require(problem.GetOffendingText() == text);
    return std::nullopt;
  }
}

void CheckNormalization(const std::u16string& text) {
  std::u16string once = text;
  foundation::storage::utility::normalizeURL(once);
  std::u16string twice = once;
  foundation::storage::utility::normalizeURL(twice);
  Require(once == twice);
}

void CheckDecoding(std::u16string text) {
  const std::size_t size = text.size();
  foundation::storage::utility::decodeURL(text);
  Require(text.size() <= size);
}

void CheckIdentifier(const AbsoluteIRI& iri) {
  Require(AbsoluteIRI(iri.toString()) == iri);
  const AbsoluteIRI parent = iri.getParent();
  Require(AbsoluteIRI(parent.toString()) == parent);
  Require((parent == iri) == iri.getName().empty());
  Require(iri.getSegments().empty() == iri.getPath().empty() || iri.getPath() == u"/");
}

/// The native text, where there is one, leads back to the identifier.
void CheckConversion(const AbsoluteIRI& iri, path_style style) {
  namespace detail = foundation::storage::vfs::detail;
  try {
    const fl::filesystem::path native = detail::fromAbsoluteIRI(iri, style);
    const AbsoluteIRI back = detail::toAbsoluteIRI(u"file", native, style);
    if (style == path_style::posix) Require(back == iri);
  } catch (const Exception&) {
    return;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const std::u16string text = fl::filesystem::from_bytes(bytes);
  Require(fl::filesystem::to_bytes(text) == bytes);

  CheckNormalization(text);
  CheckDecoding(text);
  if (const auto iri = Parse(text)) {
    CheckIdentifier(*iri);
    CheckConversion(*iri, path_style::posix);
    CheckConversion(*iri, path_style::windows);
  }
  return 0;
}
