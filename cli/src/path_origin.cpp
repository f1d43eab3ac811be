#include "path_origin.hpp"

#include <fl/filesystem/displayed_text.hpp>
#include <fl/filesystem/text_codec.hpp>

#include "location_text.hpp"
#include "session.hpp"

namespace vornixpath {

PathOrigin OriginOf(const PathOptions& options) {
  if (options.file) {
    return {"the path file " + fl::filesystem::to_displayed_text(fl::filesystem::from_bytes(*options.file)), {}};
  }
  if (options.text) return {"--path", {}};
  if (!options.session && PathVariable()) return {"VORNIX_PATH", {}};
  const auto session = SessionFile(options.session).GetLocation();
  return {"the session " + ShownText(session), session};
}

}  // namespace vornixpath
