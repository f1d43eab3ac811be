// Native paths to identifiers and back. By text alone; the windows forms work on every system, so that they are tested
// there.
#include <algorithm>
#include <foundation/storage/vfs/exception.hpp>
#include <foundation/storage/vfs/iri_conversion.hpp>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "identifier_text.hpp"

namespace foundation::storage::vfs {

namespace {

using detail::Split;
using Path = fl::filesystem::path;
using fl::filesystem::detail::native_style;
using fl::filesystem::detail::path_style;

/// A native path taken apart: what ".." cannot leave, and the names below it.
struct NativeParts {
  bool isRootless = true;
  std::u16string host;
  std::vector<std::u16string> anchor;
  std::vector<std::u16string> names;
};

std::u16string Join(const std::vector<std::u16string>& names, char16_t separator) {
  std::u16string text;
  for (const std::u16string& name : names) {
    if (!text.empty() || &name != &names.front()) text.push_back(separator);
    text += name;
  }
  return text;
}

NativeParts TakeApartPosix(const std::u16string& text) {
  NativeParts parts;
  parts.isRootless = !text.starts_with(u'/');
  parts.names = Split(text, u'/');
  return parts;
}

/// Takes "\\?\" off, which says how the rest is to be read and is no part of a name.
std::u16string WithoutVerbatimPrefix(const std::u16string& text) {
  constexpr std::u16string_view prefix = u"\\\\?\\";
  constexpr std::u16string_view unc = u"UNC\\";
  if (!text.starts_with(prefix)) return text;
  const std::u16string rest = text.substr(prefix.size());
  return rest.starts_with(unc) ? u"\\\\" + rest.substr(unc.size()) : rest;
}

/// Names below an anchor, dot segments taken out: ".." stops at the anchor.
std::vector<std::u16string> WithoutDots(std::vector<std::u16string> names) {
  std::vector<std::u16string> kept;
  for (std::u16string& name : names) {
    if (name == u"..") {
      if (!kept.empty()) kept.pop_back();
    } else if (name != u".") {
      kept.push_back(std::move(name));
    }
  }
  return kept;
}

/// An identifier of a file leaves `localhost` out, and what was a share would come back as a folder of the current
/// drive.
std::u16string TakeServer(std::vector<std::u16string>& root, const std::u16string& text) {
  const std::u16string server = root.front();
  root.erase(root.begin());
  if (AbsoluteIRI(u"file://" + server).getHost().empty())
    throw Exception(text, "a share of this machine has no identifier");
  return server;
}

NativeParts TakeApartWindows(const std::u16string& given) {
  const std::u16string text =
      WithoutVerbatimPrefix(fl::filesystem::detail::make_native_form(given, true, path_style::windows));
  const std::u16string root = fl::filesystem::detail::extract_root_path(text, path_style::windows);
  NativeParts parts;
  const bool isShare = root.starts_with(u"\\\\");
  parts.isRootless = !isShare && !root.ends_with(u'\\');
  if (parts.isRootless) {
    parts.names = Split(text, u'\\');
    return parts;
  }
  parts.anchor = Split(root, u'\\');
  if (isShare) parts.host = TakeServer(parts.anchor, given);
  parts.names = WithoutDots(Split(std::u16string_view(text).substr(root.size()), u'\\'));
  return parts;
}

void AppendPath(std::u16string& text, const std::vector<std::u16string>& names) {
  for (const std::u16string& name : names) {
    detail::AppendEscaped(text, name);
    text.push_back(u'/');
  }
}

std::u16string IdentifierText(const std::u16string& scheme, const NativeParts& parts) {
  std::u16string text = scheme + u':';
  if (!parts.isRootless) {
    text += u"//";
    detail::AppendEscaped(text, parts.host);
    text.push_back(u'/');
  }
  AppendPath(text, parts.anchor);
  AppendPath(text, parts.names);
  return text;
}

[[noreturn]] void RefuseConversion(const AbsoluteIRI& iri, std::string_view reason) {
  throw Exception("convert", iri, std::make_error_code(std::errc::invalid_argument), reason);
}

void RequireNativeNames(const AbsoluteIRI& iri, const std::vector<std::u16string>& names, path_style style) {
  const auto anyHolds = [&names](char16_t unit) {
    return std::any_of(names.begin(), names.end(),
                       [unit](const std::u16string& name) { return name.find(unit) != std::u16string::npos; });
  };
  if (anyHolds(u'/')) RefuseConversion(iri, "a name in it holds '/'");
  if (anyHolds(u'\0')) RefuseConversion(iri, "a name in it holds NUL");
  if (style == path_style::windows && anyHolds(u'\\')) RefuseConversion(iri, "a name in it holds a backslash");
}

std::u16string PosixText(const AbsoluteIRI& iri, const std::vector<std::u16string>& names) {
  if (!iri.getHost().empty()) RefuseConversion(iri, "it names a host");
  return (iri.isRootless() ? u"" : u"/") + Join(names, u'/');
}

/// Looks for a byte, which is done many at a time; texts with such a byte in another character are few.
bool MayHoldPercentSign(const std::u16string& text) {
  const std::string_view bytes(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t));
  return bytes.find('%') != std::string_view::npos;
}

/// What most identifiers come down to: no host and no escape, so that their text is already that of their names,
/// joined.
std::optional<std::u16string> PosixTextWithoutEscapes(const AbsoluteIRI& iri) {
  const std::u16string& text = iri.toString();
  const std::size_t start = text.find(u':') + std::u16string_view(iri.isRootless() ? u":" : u"://").size();
  const bool hasHost = !iri.isRootless() && text[start] != u'/';
  if (hasHost || MayHoldPercentSign(text)) return std::nullopt;
  return text.substr(start);
}

bool IsDrive(const std::u16string& name) {
  return name.size() == 2 && name == fl::filesystem::detail::extract_root_path(name, path_style::windows);
}

std::u16string WindowsText(const AbsoluteIRI& iri, const std::vector<std::u16string>& names) {
  if (iri.isRootless()) return Join(names, u'\\');

  const std::u16string host = iri.getHost();
  const std::u16string joined = Join(names, u'\\');
  // A drive and a share are roots, and a root keeps its separator.
  const std::u16string end = names.size() == 1 ? u"\\" : u"";
  if (!host.empty()) return u"\\\\" + host + (names.empty() ? u"" : u"\\") + joined + end;
  if (!names.empty() && IsDrive(names.front())) return joined + end;
  return u"\\" + joined;
}

}  // namespace

bool hasIRIPrefix(const std::u16string& text) noexcept {
  const std::size_t length = detail::LengthOfScheme(text);
  return length > 0 && std::u16string_view(text).substr(length).starts_with(u"://");
}

AbsoluteIRI toAbsoluteIRI(const std::u16string& scheme, const Path& path) {
  return detail::toAbsoluteIRI(scheme, path, native_style);
}

Path fromAbsoluteIRI(const AbsoluteIRI& iri) { return detail::fromAbsoluteIRI(iri, native_style); }

namespace detail {

AbsoluteIRI toAbsoluteIRI(const std::u16string& scheme, const Path& path, path_style style) {
  const std::u16string& text = path.u16string();
  if (text.find(u'\0') != std::u16string::npos) throw Exception(text, "a path cannot hold NUL");
  const NativeParts parts = style == path_style::windows ? TakeApartWindows(text) : TakeApartPosix(text);
  return AbsoluteIRI(IdentifierText(NormalizeScheme(scheme), parts));
}

Path fromAbsoluteIRI(const AbsoluteIRI& iri, path_style style) {
  if (!iri.toString().starts_with(u"file:")) RefuseConversion(iri, "its scheme is not \"file\"");
  return toNativePath(iri, style);
}

Path toNativePath(const AbsoluteIRI& iri, path_style style) {
  if (style == path_style::posix) {
    if (auto text = PosixTextWithoutEscapes(iri)) return Path(std::move(*text));
  }
  const std::vector<std::u16string> names = iri.getSegments();
  RequireNativeNames(iri, names, style);
  return Path(style == path_style::windows ? WindowsText(iri, names) : PosixText(iri, names));
}

}  // namespace detail

}  // namespace foundation::storage::vfs
