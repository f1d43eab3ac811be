#include "current_folder.hpp"

#include <filesystem>
#include <fl/filesystem/text_codec.hpp>

namespace vornixpath {

std::u16string CurrentFolder() { return fl::filesystem::from_bytes(std::filesystem::current_path().string()); }

}  // namespace vornixpath
