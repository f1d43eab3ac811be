#include "location_argument.hpp"

#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <search_path_environment/location_from_text.hpp>

#include "current_folder.hpp"
#include "usage_error.hpp"

namespace vornixpath {

foundation::storage::vfs::AbsoluteIRI LocationFromArgument(const std::string& bytes) {
  try {
    return Quorvex::PathEnvironment::LocationFromText(fl::filesystem::from_bytes(bytes), CurrentFolder());
  } catch (const foundation::storage::vfs::Exception& exception) {
    throw UsageError(exception.what());
  }
}

}  // namespace vornixpath
