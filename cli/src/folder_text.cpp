#include "folder_text.hpp"

#include <filesystem>
#include <fl/filesystem/path.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/iri_conversion.hpp>
#include <search_path_utilities/path_editing.hpp>

namespace vornixpath {

namespace vfs = foundation::storage::vfs;

std::u16string CurrentFolder() { return fl::filesystem::from_bytes(std::filesystem::current_path().string()); }

vfs::AbsoluteIRI LocationFromText(const std::u16string& text, const std::u16string& base) {
  if (vfs::hasIRIPrefix(text)) return Quorvex::PathManagement::GetIRIFromString(text);
  return LocationFromPath(text, base);
}

vfs::AbsoluteIRI LocationFromPath(const std::u16string& path, const std::u16string& base) {
  const bool isAbsolute = !fl::filesystem::detail::extract_root_path(path).empty();
  return Quorvex::PathManagement::GetIRIFromString(isAbsolute ? path : base + u"/" + path);
}

}  // namespace vornixpath
