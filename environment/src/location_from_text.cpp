#include <fl/filesystem/path.hpp>
#include <foundation/storage/vfs/iri_conversion.hpp>
#include <search_path_environment/location_from_text.hpp>
#include <search_path_utilities/path_editing.hpp>

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;
using PathManagement::GetIRIFromString;

namespace {

// The names in a path stand for themselves, those in an identifier may be escaped: so identifiers are joined, not the
// texts they were made from.
AbsoluteIRI Joined(const AbsoluteIRI& base, const AbsoluteIRI& relative) {
  if (base.isRootless()) return relative;
  const std::u16string& folder = base.toString();
  const std::u16string& names = relative.toString();
  const bool isRoot = folder.ends_with(u'/');
  return AbsoluteIRI(folder + (isRoot ? u"" : u"/") + names.substr(names.find(u':') + 1));
}

}  // namespace

AbsoluteIRI LocationFromText(const std::u16string& text, const std::u16string& base) {
  if (foundation::storage::vfs::hasIRIPrefix(text)) return GetIRIFromString(text);
  return LocationFromPath(text, base);
}

AbsoluteIRI LocationFromPath(const std::u16string& path, const std::u16string& base) {
  const bool isAbsolute = !fl::filesystem::detail::extract_root_path(path).empty();
  const AbsoluteIRI location = foundation::storage::vfs::toAbsoluteIRI(u"file", fl::filesystem::path(path));
  return isAbsolute ? location : Joined(GetIRIFromString(base), location);
}

}  // namespace Quorvex::PathEnvironment
