#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <string>
#include <string_view>

namespace vornixpath {

/// `text` as one word of a shell's command line, in quotation marks that let everything stand for itself.
[[nodiscard]] std::string ShellWord(std::string_view text);

/// The same for a location: its path, or the identifier where the path could not be shown as it is.
[[nodiscard]] std::string ShellWord(const foundation::storage::vfs::AbsoluteIRI& location);

}  // namespace vornixpath
