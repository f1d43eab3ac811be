#pragma once

#include <memory>
#include <search_path_interfaces/path_entry.hpp>

namespace vornixpath {

using EntryPtr = std::shared_ptr<const Quorvex::PathManagement::IPathEntry>;

}  // namespace vornixpath
