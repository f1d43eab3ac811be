#include <editing/split_at_any_of.hpp>
#include <foundation/storage/utility/url.hpp>
#include <foundation/storage/vfs/folder.hpp>
#include <foundation/storage/vfs/iri_conversion.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <search_path_interfaces/constants.hpp>
#include <search_path_utilities/path_editing.hpp>
#include <string_view>

namespace Quorvex::PathManagement {

namespace utility = foundation::storage::utility;
namespace vfs = foundation::storage::vfs;

namespace {

constexpr std::u16string_view kFileScheme = u"file";

fl::filesystem::path NativePathOf(const std::u16string& text) {
  if (text.empty()) return {};
  return fl::filesystem::path(fl::filesystem::detail::make_native_form(text, true));
}

}  // namespace

std::vector<std::u16string> SplitVornixPath(const std::u16string& text) {
  return detail::SplitAtAnyOf<std::vector<std::u16string>>(text, u";" + Constants::VornixPathsepStr);
}

vfs::AbsoluteIRI GetIRIFromString(const std::u16string& text) {
  if (vfs::hasIRIPrefix(text)) {
    std::u16string normalized = text;
    utility::normalizeURL(normalized);
    return vfs::AbsoluteIRI(normalized);
  }
  return vfs::toAbsoluteIRI(std::u16string(kFileScheme), NativePathOf(text));
}

std::u16string GetStringFromIRI(const vfs::AbsoluteIRI& iri) {
  if (iri.toString().starts_with(u"file:")) return vfs::fromAbsoluteIRI(iri).u16string();

  std::u16string decoded = iri.toString();
  utility::decodeURL(decoded);
  return decoded;
}

vfs::CanonicalAbsoluteIRI GetCanonicalIRI(const vfs::AbsoluteIRI& iri) {
  return vfs::Folder(iri, vfs::VornixStorageSystem::GetStorageSystemReference()).getCanonicalLocation();
}

std::u16string RemoveRootPathFromAbsolutePath(const fl::filesystem::path& path) {
  std::u16string text = path.u16string();
  const std::u16string root = fl::filesystem::detail::extract_root_path(text);
  const std::size_t position = root.empty() ? 0 : text.find(root);

  // A root that is not found makes the erase start beyond the end, which the string reports. That the count includes
  // the position is deliberate; a root stands at position 0.
  text.erase(position, position + root.length());
  return text;
}

}  // namespace Quorvex::PathManagement
