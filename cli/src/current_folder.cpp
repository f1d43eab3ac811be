#include "current_folder.hpp"

#include <filesystem>
#include <fl/filesystem/text_codec.hpp>
#include <system_error>

namespace vornixpath {

namespace {

std::u16string TextOf(const std::filesystem::path& folder) { return fl::filesystem::from_bytes(folder.string()); }

}  // namespace

std::u16string CurrentFolder() { return TextOf(std::filesystem::current_path()); }

std::optional<std::u16string> CurrentFolderIfAny() {
  std::error_code removed;
  const std::filesystem::path folder = std::filesystem::current_path(removed);
  if (removed) return std::nullopt;
  return TextOf(folder);
}

}  // namespace vornixpath
