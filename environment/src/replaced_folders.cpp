#include "replaced_folders.hpp"

#include <algorithm>
#include <numeric>

namespace Quorvex::PathEnvironment {

namespace {

std::vector<Position> PositionsOf(const ReplacedFolders::Entries& entries) {
  std::vector<Position> positions;
  positions.reserve(entries.size());
  for (const auto& [position, entry] : entries) positions.push_back(position);
  std::sort(positions.begin(), positions.end());
  return positions;
}

PathLayer LayerOf(const ReplacedFolders::Entries& entries) {
  const std::vector<Position> positions = PositionsOf(entries);
  std::vector<std::shared_ptr<const FolderEntry>> inOrder;
  inOrder.reserve(positions.size());
  for (const Position position : positions) inOrder.push_back(entries.at(position));
  return PathLayer(inOrder, positions);
}

}  // namespace

ReplacedFolders::Level::Level(const Entries& entries) : layer(LayerOf(entries)) {
  for (const auto& [position, entry] : entries) positions.insert(position);
}

std::optional<ReplacedFolders> ReplacedFolders::With(const Entries& entries, std::size_t limit) const {
  if (CountFolders() + entries.size() > limit) return std::nullopt;

  ReplacedFolders result = *this;
  Entries joined = entries;
  std::size_t size = entries.size();
  while (!result.levels_.empty() && result.levels_.back()->positions.size() < 2 * size) {
    const Level& top = *result.levels_.back();
    for (const LocationTable::Slot& slot : top.layer.GetSlots()) {
      if (slot.parent == kNoOrdinal) joined.emplace(slot.position, slot.entry);  // unless there is a newer one
    }
    size += top.positions.size();
    result.levels_.pop_back();
  }
  result.levels_.push_back(std::make_shared<const Level>(joined));
  return result;
}

bool ReplacedFolders::IsInOrAbove(std::size_t level, Position position) const {
  return std::any_of(levels_.begin() + static_cast<std::ptrdiff_t>(level), levels_.end(),
                     [position](const auto& each) { return each->positions.contains(position); });
}

std::size_t ReplacedFolders::CountFolders() const {
  return std::accumulate(levels_.begin(), levels_.end(), std::size_t{0},
                         [](std::size_t count, const auto& level) { return count + level->positions.size(); });
}

}  // namespace Quorvex::PathEnvironment
