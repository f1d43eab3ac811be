// The folders of a path that were replaced since its base was made.
#pragma once

#include <boost/unordered/unordered_flat_map.hpp>
#include <boost/unordered/unordered_flat_set.hpp>
#include <cstddef>
#include <memory>
#include <optional>
#include <search_path_environment/folder_entry.hpp>
#include <vector>

#include "location_table.hpp"
#include "path_layer.hpp"

namespace Quorvex::PathEnvironment {

/// A short stack of layers, old below new. A replaced position counts in the newest level that holds it.
///
/// Each level is at least twice as large as the one above it: what comes in is joined with levels of like size into one
/// new level. So n folders that come in one by one are indexed O(n log n) times in all, and there are never more than
/// O(log n) levels. Immutable, cheap to copy, safe from any thread.
class ReplacedFolders {
 public:
  using Entries = boost::unordered_flat_map<Position, std::shared_ptr<const FolderEntry>>;

  /// These and those of `entries`, not empty, which are newer; nothing when all levels together would pass `limit`
  /// folders, those that several hold counted several times.
  [[nodiscard]] std::optional<ReplacedFolders> With(const Entries& entries, std::size_t limit) const;

  /// O(levels).
  [[nodiscard]] bool Hold(Position position) const { return IsInOrAbove(0, position); }

  /// Calls `ask(layer, isAlive)` for each level.
  template <class Ask>
  void ForEachLevel(const Ask& ask) const {
    for (std::size_t i = 0; i < levels_.size(); ++i) {
      ask(levels_[i]->layer, [this, i](const LocationTable::Slot& slot) { return !IsInOrAbove(i + 1, slot.position); });
    }
  }

  [[nodiscard]] std::size_t CountLevels() const noexcept { return levels_.size(); }

 private:
  struct Level {
    explicit Level(const Entries& entries);

    PathLayer layer;
    boost::unordered_flat_set<Position> positions;
  };

  [[nodiscard]] bool IsInOrAbove(std::size_t level, Position position) const;
  [[nodiscard]] std::size_t CountFolders() const;

  std::vector<std::shared_ptr<const Level>> levels_;
};

}  // namespace Quorvex::PathEnvironment
