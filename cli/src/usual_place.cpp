#include "usual_place.hpp"

#include <fl/filesystem/text_codec.hpp>
#include <search_path_environment/location_from_text.hpp>

#include "environment_variable.hpp"

namespace vornixpath {

std::optional<foundation::storage::vfs::AbsoluteIRI> PlaceBelow(const char* variable, const std::string& place) {
  const std::optional<std::string> folder = Variable(variable);
  if (!folder || folder->front() != '/') return std::nullopt;
  return Quorvex::PathEnvironment::LocationFromPath(fl::filesystem::from_bytes(*folder + place), u"/");
}

}  // namespace vornixpath
