#include "entry_places.hpp"

#include <algorithm>
#include <unordered_set>

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;

namespace {

// Depth is bounded by the reader, so recursion is too.
template <class Visit>
void ForEachPlace(const FolderEntry& entry, const Visit& visit) {
  for (const AbsoluteIRI& place : PlacesOf(entry)) visit(place);
  for (const auto& child : entry.GetChildren()) ForEachPlace(*child, visit);
}

}  // namespace

std::vector<AbsoluteIRI> PlacesOf(const FolderEntry& entry) {
  std::vector<AbsoluteIRI> places = {entry.GetLocation().getResolvedIRI()};
  const AbsoluteIRI canonical = entry.GetCanonicalLocation().getResolvedIRI();
  if (!(canonical == places.front())) places.push_back(canonical);
  return places;
}

std::vector<AbsoluteIRI> PlacesLeft(const FolderEntry& before, const FolderEntry& after) {
  std::unordered_set<AbsoluteIRI> kept;
  ForEachPlace(after, [&kept](const AbsoluteIRI& place) { kept.insert(place); });
  std::vector<AbsoluteIRI> left;
  ForEachPlace(before, [&](const AbsoluteIRI& place) {
    if (!kept.contains(place)) left.push_back(place);
  });
  return left;
}

void EntryPlaces::Add(const FolderEntry& mainEntry, Number number) {
  ForEachPlace(mainEntry, [&](const AbsoluteIRI& place) {
    Numbers& numbers = numbers_[place];
    if (std::find(numbers.begin(), numbers.end(), number) == numbers.end()) numbers.push_back(number);
  });
}

void EntryPlaces::Remove(const AbsoluteIRI& place, Number number) noexcept {
  const auto known = numbers_.find(place);
  if (known == numbers_.end()) return;
  const auto found = std::find(known->second.begin(), known->second.end(), number);
  if (found != known->second.end()) known->second.erase(found);
  if (known->second.empty()) numbers_.erase(known);
}

std::optional<EntryPlaces::Found> EntryPlaces::FindAtOrAbove(AbsoluteIRI location) const {
  while (true) {
    const auto known = numbers_.find(location);
    if (known != numbers_.end()) return Found{location, {known->second.begin(), known->second.end()}};
    const AbsoluteIRI above = location.getParent();
    if (above == location) return std::nullopt;
    location = above;
  }
}

}  // namespace Quorvex::PathEnvironment
