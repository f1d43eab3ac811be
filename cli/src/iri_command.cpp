#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <search_path_utilities/path_editing.hpp>

#include "commands.hpp"
#include "output.hpp"
#include "usage_error.hpp"

namespace vornixpath {

ExitStatus RunIri(const IriOptions& options) {
  const std::u16string text = fl::filesystem::from_bytes(options.text);
  try {
    if (options.back) {
      const foundation::storage::vfs::AbsoluteIRI iri(text);
      WriteResult(Quorvex::PathManagement::GetStringFromIRI(iri), options.form);
    } else {
      WriteSafeResult(ExactText(Quorvex::PathManagement::GetIRIFromString(text)), options.form);
    }
  } catch (const foundation::storage::vfs::Exception& exception) {
    throw UsageError(exception.what());
  }
  return ExitStatus::Yes;
}

}  // namespace vornixpath
