#pragma once

#include <memory>
#include <search_path_interfaces/path_entry.hpp>
#include <vector>

namespace Quorvex::PathManagement::detail {

/// Two vectors of entries, taken apart by the identity of the objects. Each list is in ascending order of addresses.
struct Partition {
  std::vector<std::shared_ptr<const IPathEntry>> onlyOld;
  std::vector<std::shared_ptr<const IPathEntry>> onlyNew;
  /// Common to both, but not on their longest common subsequence.
  std::vector<std::shared_ptr<const IPathEntry>> reordered;
};

/// Both vectors count as multisets.
[[nodiscard]] Partition PartitionOf(std::vector<std::shared_ptr<const IPathEntry>> oldEntries,
                                    std::vector<std::shared_ptr<const IPathEntry>> newEntries);

}  // namespace Quorvex::PathManagement::detail
