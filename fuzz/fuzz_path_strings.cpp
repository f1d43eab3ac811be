// Path strings and folder texts from any bytes, read as a file name's bytes and as raw UTF-16: splitting keeps what is
// no separator, an identifier leads to its text and back, and nothing but storage's exception comes out.
#include <cstddef>
#include <cstdint>
#include <fl/filesystem/path.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <foundation/storage/vfs/iri_conversion.hpp>
#include <optional>
#include <search_path_interfaces/constants.hpp>
#include <search_path_utilities/path_editing.hpp>
#include <string>
#include <vector>

#include "require.hpp"

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::Exception;
using foundation::storage::vfs::hasIRIPrefix;
using Quorvex::PathManagement::GetIRIFromString;
using Quorvex::PathManagement::GetStringFromIRI;
using Quorvex::PathManagement::RemoveRootPathFromAbsolutePath;
using Quorvex::PathManagement::SplitVornixPath;

std::u16string NativeFormOf(const std::u16string& text) { return fl::filesystem::detail::make_native_form(text, true); }

bool IsSeparator(char16_t unit) {
  return unit == u';' || Quorvex::PathManagement::Constants::VornixPathsepStr.find(unit) != std::u16string::npos;
}

/// The elements that `text` must have: its runs without separators.
std::vector<std::u16string> RunsOf(const std::u16string& text) {
  std::vector<std::u16string> runs(1);
  for (const char16_t unit : text) {
    if (IsSeparator(unit)) {
      runs.emplace_back();
    } else {
      runs.back().push_back(unit);
    }
  }
  std::erase(runs, u"");
  return runs;
}

void CheckSplitting(const std::u16string& text) {
  const std::vector<std::u16string> elements = SplitVornixPath(text);
  Require(elements == RunsOf(text));

  std::u16string joined;
  for (const std::u16string& element : elements) joined += element + u';';
  Require(SplitVornixPath(joined) == elements);
}

/// The text that is at fault when `text` is refused: an identifier as it was given, a path with NUL in native form, any
/// other path as the identifier that it would have.
bool IsQuotedIn(const std::u16string& quoted, const std::u16string& text) {
  if (hasIRIPrefix(text)) return quoted == text;
  if (text.find(u'\0') != std::u16string::npos) return quoted == NativeFormOf(text);
  return quoted.starts_with(text.starts_with(u'/') ? u"file:///" : u"file:");
}

std::optional<AbsoluteIRI> Convert(const std::u16string& text) {
  try {
    return GetIRIFromString(text);
  } catch (const Exception& problem) {
    Require(IsQuotedIn(problem.GetOffendingText(), text));
    return std::nullopt;
  }
}

std::optional<std::u16string> ConvertBack(const AbsoluteIRI& iri) {
  try {
    return GetStringFromIRI(iri);
  } catch (const Exception& problem) {
    // Only a file identifier can lack a native path.
    Require(iri.getScheme() == u"file" && problem.GetOffendingText() == iri.toString());
    return std::nullopt;
  }
}

/// Whether storage calls the place just so: absolute, in native form, without dot segments, spelled as its bytes are.
bool IsNormalPath(const std::u16string& text) {
  if (!text.starts_with(u'/') || NativeFormOf(text) != text) return false;
  const std::u16string closed = text + u'/';
  if (closed.find(u"/./") != std::u16string::npos || closed.find(u"/../") != std::u16string::npos) return false;
  return fl::filesystem::from_bytes(fl::filesystem::to_bytes(text)) == text;
}

void CheckIdentifier(const std::u16string& text, const AbsoluteIRI& iri) {
  const bool isPath = !hasIRIPrefix(text);
  if (isPath) Require(iri.getScheme() == u"file");

  const std::optional<std::u16string> back = ConvertBack(iri);
  // What came from a path has one.
  if (isPath) Require(back.has_value());
  if (!back) return;

  if (iri.getScheme() == u"file") Require(GetIRIFromString(*back) == iri);
  if (isPath && IsNormalPath(text)) Require(*back == text);
}

void CheckRoot(const std::u16string& text) {
  const std::u16string root = fl::filesystem::detail::extract_root_path(text);
  Require(root + RemoveRootPathFromAbsolutePath(fl::filesystem::path(text)) == text);
}

void Check(const std::u16string& text) {
  CheckSplitting(text);
  CheckRoot(text);
  if (const auto iri = Convert(text)) CheckIdentifier(text, *iri);
  for (const std::u16string& element : SplitVornixPath(text)) {
    if (const auto iri = Convert(element)) CheckIdentifier(element, *iri);
  }
}

/// Two bytes a code unit, so that lone surrogates of every kind come up.
std::u16string RawText(const std::string& bytes) {
  std::u16string text;
  for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
    const unsigned high = static_cast<unsigned char>(bytes[at + 1]);
    const unsigned low = static_cast<unsigned char>(bytes[at]);
    text.push_back(static_cast<char16_t>((high << 8U) | low));
  }
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  Check(fl::filesystem::from_bytes(bytes));
  Check(RawText(bytes));
  return 0;
}
