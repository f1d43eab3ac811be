#include <fl/filesystem/text_codec.hpp>
#include <search_path_utilities/path_editing.hpp>

#include "commands.hpp"
#include "output.hpp"

namespace vornixpath {

ExitStatus RunSplit(const SplitOptions& options) {
  for (const auto& folder : Quorvex::PathManagement::SplitVornixPath(fl::filesystem::from_bytes(options.text))) {
    WriteResult(folder, options.form);
  }
  return ExitStatus::Yes;
}

}  // namespace vornixpath
