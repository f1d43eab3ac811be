#pragma once

#include <memory>
#include <search_path_interfaces/path_entry.hpp>
#include <span>

namespace Quorvex::PathManagement::detail {

/// Ascending, in parallel where there are many.
void SortByAddress(std::span<std::shared_ptr<const IPathEntry>> entries);

/// The same, in the order of their locations; entries for one folder stand in no order. Exceptions of `GetAbsoluteIRI`
/// pass to the caller, and the content of `entries` is lost then.
void SortByFolder(std::span<std::shared_ptr<const IPathEntry>> entries);

}  // namespace Quorvex::PathManagement::detail
