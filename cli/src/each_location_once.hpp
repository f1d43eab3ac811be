#pragma once

#include <search_path_interfaces/found_item.hpp>
#include <vector>

namespace vornixpath {

/// Keeps of each file its first place in the list. A special folder that stands on the path, too, is met twice.
void KeepEachLocationOnce(std::vector<Quorvex::PathManagement::FoundItem>& files);

}  // namespace vornixpath
