#include "location_text.hpp"

#include <fl/filesystem/displayed_text.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <search_path_utilities/path_editing.hpp>

namespace vornixpath {

using foundation::storage::vfs::AbsoluteIRI;

std::u16string TextOf(const AbsoluteIRI& location) {
  try {
    return Quorvex::PathManagement::GetStringFromIRI(location);
  } catch (const foundation::storage::vfs::Exception&) {
    return std::u16string(location.toString());  // people can do without the text, but not without the answer
  }
}

std::string ShownText(const AbsoluteIRI& location) { return fl::filesystem::to_displayed_text(TextOf(location)); }

std::u16string PlaceWithin(const AbsoluteIRI& folder, const AbsoluteIRI& location) {
  const auto names = location.getSegments();
  std::u16string place;
  for (std::size_t i = folder.getSegments().size(); i < names.size(); ++i) {
    place.append(place.empty() ? u"" : u"/").append(names[i]);
  }
  return place;
}

}  // namespace vornixpath
