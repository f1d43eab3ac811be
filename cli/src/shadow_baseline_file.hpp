// Where baselines are kept. Links are followed, for reading and for writing: the folder of a baseline is the one in
// which the file really stands.
#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>

#include "shadow_baseline.hpp"

namespace vornixpath {

/// Throws std::runtime_error, `cannot use the baseline "/x/list": line 3: there is no grade "grave"`, for a file that
/// is none, and when there is no such file.
[[nodiscard]] AcceptedShadows ReadBaseline(const foundation::storage::vfs::AbsoluteIRI& file);

/// Puts the text in the place of what stood there in one step: whatever fails, the old file is still whole. Where
/// `file` is a link, what it leads to is replaced. Throws std::runtime_error, `cannot write the baseline "/x/list":
/// Permission denied`, when storage fails and when what stands there is neither empty nor a baseline.
void WriteBaseline(const AcceptedShadows& shadows, const foundation::storage::vfs::AbsoluteIRI& file);

}  // namespace vornixpath
