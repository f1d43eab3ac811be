#include "folder_changes.hpp"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <unordered_set>

#include "location_text.hpp"

namespace vornixpath {

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using Folders = std::vector<AbsoluteIRI>;

// Each folder at its first place.
class Places {
 public:
  explicit Places(const Folders& folders) {
    for (std::size_t i = 0; i < folders.size(); ++i) {
      if (places_.emplace(folders[i], i).second) order_.push_back(folders[i]);
    }
  }

  [[nodiscard]] const Folders& InOrder() const { return order_; }
  [[nodiscard]] bool Has(const AbsoluteIRI& folder) const { return places_.contains(folder); }
  [[nodiscard]] std::size_t Of(const AbsoluteIRI& folder) const { return places_.at(folder); }

 private:
  std::unordered_map<AbsoluteIRI, std::size_t> places_;
  Folders order_;
};

// The elements, as indices, of a longest rising subsequence of `values`, which differ.
std::unordered_set<std::size_t> LongestRise(const std::vector<std::size_t>& values) {
  std::vector<std::size_t> ends;  // of the best rise of each length, the index of its last and least element
  std::vector<std::optional<std::size_t>> previous(values.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    const auto place = std::lower_bound(ends.begin(), ends.end(), values[i],
                                        [&](std::size_t end, std::size_t value) { return values[end] < value; });
    if (place != ends.begin()) previous[i] = *std::prev(place);
    if (place == ends.end()) {
      ends.push_back(i);
    } else {
      *place = i;
    }
  }

  std::unordered_set<std::size_t> rise;
  std::optional<std::size_t> next = ends.empty() ? std::nullopt : std::make_optional(ends.back());
  for (; next; next = previous[*next]) rise.insert(*next);
  return rise;
}

// Of the folders that stand in both: those that keep their order are not moved, the others are.
std::unordered_set<AbsoluteIRI> MovedFrom(const Places& before, const Places& after) {
  Folders common;
  std::vector<std::size_t> oldPlaces;
  for (const AbsoluteIRI& folder : after.InOrder()) {
    if (!before.Has(folder)) continue;
    common.push_back(folder);
    oldPlaces.push_back(before.Of(folder));
  }

  const std::unordered_set<std::size_t> kept = LongestRise(oldPlaces);
  std::unordered_set<AbsoluteIRI> moved;
  for (std::size_t i = 0; i < common.size(); ++i) {
    if (!kept.contains(i)) moved.insert(common[i]);
  }
  return moved;
}

}  // namespace

std::vector<FolderChange> ChangesBetween(const Folders& before, const Folders& after) {
  const Places oldPlaces(before);
  const Places newPlaces(after);
  const std::unordered_set<AbsoluteIRI> moved = MovedFrom(oldPlaces, newPlaces);

  std::vector<FolderChange> changes;
  for (const AbsoluteIRI& folder : newPlaces.InOrder()) {
    if (!oldPlaces.Has(folder)) {
      changes.push_back({ChangeKind::Added, folder});
    } else if (moved.contains(folder)) {
      changes.push_back({ChangeKind::Moved, folder});
    }
  }
  for (const AbsoluteIRI& folder : oldPlaces.InOrder()) {
    if (!newPlaces.Has(folder)) changes.push_back({ChangeKind::Removed, folder});
  }
  return changes;
}

std::string InWords(const FolderChange& change) {
  const auto mark = [](ChangeKind kind) {
    switch (kind) {
      case ChangeKind::Added:
        return "+ ";
      case ChangeKind::Removed:
        return "- ";
      case ChangeKind::Moved:
        return "~ ";
    }
    return "? ";
  };
  return mark(change.kind) + ShownText(change.folder);
}

const char* NameOf(ChangeKind kind) {
  switch (kind) {
    case ChangeKind::Added:
      return "added";
    case ChangeKind::Removed:
      return "removed";
    case ChangeKind::Moved:
      return "moved";
  }
  return "unknown";
}

}  // namespace vornixpath
