#pragma once

#include <string>
#include <vector>

#include "finding.hpp"

namespace vornixpath {

/// What `doctor` finds, kind by kind. Of shadowed names only how many there are: the page tells them elsewhere.
[[nodiscard]] std::string FindingsHtml(const std::vector<Finding>& findings);

}  // namespace vornixpath
