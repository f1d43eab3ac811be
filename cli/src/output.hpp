#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <string>
#include <string_view>

#include "command_line.hpp"

namespace vornixpath {

/// Writes one result to standard output.
void WriteResult(std::u16string_view text, OutputForm form);

/// The same for bytes that are safe for a terminal as they are.
void WriteSafeResult(std::string_view bytes, OutputForm form);

/// `vornixpath: MESSAGE` on standard error. `message` must be safe for a terminal already.
void WriteMessage(std::string_view message);
void WriteWarning(std::string_view message);

/// The exact identifier in UTF-8, with whatever a terminal would act on percent-encoded: read back, it is the same
/// identifier.
[[nodiscard]] std::string ExactText(const foundation::storage::vfs::AbsoluteIRI& iri);

/// `text` in quotation marks, safe for a terminal.
[[nodiscard]] std::string Quoted(std::u16string_view text);

/// What is still to be written, and all that follows, goes nowhere: nobody reads it any more.
void DiscardOutput();

/// Flushes standard output. Throws std::runtime_error when something that was written did not arrive.
void FinishOutput();

}  // namespace vornixpath
