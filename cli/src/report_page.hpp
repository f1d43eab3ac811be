#pragma once

#include <string>
#include <vector>

#include "finding.hpp"
#include "report_ladder.hpp"
#include "report_names.hpp"
#include "report_slowest.hpp"
#include "shadow_pairs.hpp"

namespace vornixpath {

/// What a page tells of a path.
struct ReportFacts {
  std::string origin;  ///< where the path comes from; safe for a terminal
  std::vector<Finding> findings;
  std::vector<Rung> ladder;
  std::vector<ShadowPair> shadows;
  std::vector<MeantName> names;
  std::vector<FolderTime> slowest;
};

/// A whole page: UTF-8, complete in itself. Follows from the facts alone, byte by byte.
[[nodiscard]] std::string PageOf(const ReportFacts& facts);

}  // namespace vornixpath
