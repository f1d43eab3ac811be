#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <string_view>

namespace vornixpath {

/// What every page begins with, by which it is known again.
inline constexpr std::string_view kReportBeginning = "<!DOCTYPE html>\n<!-- vornixpath report, version 1 -->\n";

/// Throws std::runtime_error when something stands in `file` that a page must not take the place of: what is no page,
/// and not empty, either.
void RequireReportOrNothing(const foundation::storage::vfs::AbsoluteIRI& file);

/// Puts `page` in the place of what `file` held, in one step: on failure, and to whoever looks meanwhile, the old page
/// is whole. Throws as above, and what storage throws.
void WriteReport(const foundation::storage::vfs::AbsoluteIRI& file, std::string_view page);

}  // namespace vornixpath
