#include "shadow_pairs.hpp"

#include <algorithm>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>

#include "location_text.hpp"

namespace vornixpath {

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using Quorvex::PathManagement::IPath;
using Quorvex::PathManagement::IPathEntry;

struct PlacedShadow {
  NumberedFolder hiding;
  NumberedFolder hidden;
  GradedShadow shadow;
};

NumberedFolder FolderOf(const IPathEntry& entry, const IPath& path, const FolderNumbers& numbers) {
  return {path.GetMainEntryForEntry(entry)->GetAbsoluteIRI(), numbers.NumberOf(entry)};
}

}  // namespace

std::vector<ShadowPair> PairsOf(std::vector<GradedShadow> shadows, const IPath& path, const FolderNumbers& numbers) {
  std::vector<PlacedShadow> placed;
  placed.reserve(shadows.size());
  for (GradedShadow& graded : shadows) {
    const Shadow& shadow = graded.shadow;
    const NumberedFolder hiding = FolderOf(*shadow.winner.GetPathEntry(), path, numbers);
    const NumberedFolder hidden = FolderOf(*shadow.hiddenEntry, path, numbers);
    placed.push_back({hiding, hidden, std::move(graded)});
  }
  std::stable_sort(placed.begin(), placed.end(), [](const PlacedShadow& left, const PlacedShadow& right) {
    return std::tie(left.hiding.number, left.hidden.number, left.shadow.shadow.name) <
           std::tie(right.hiding.number, right.hidden.number, right.shadow.shadow.name);
  });

  std::vector<ShadowPair> pairs;
  for (PlacedShadow& next : placed) {
    if (pairs.empty() || pairs.back().hiding != next.hiding || pairs.back().hidden != next.hidden) {
      pairs.push_back({next.hiding, next.hidden, {}});
    }
    pairs.back().shadows.push_back(std::move(next.shadow));
  }
  return pairs;
}

std::size_t CountNames(const ShadowPair& pair) {
  std::set<std::u16string_view> names;
  for (const GradedShadow& graded : pair.shadows) names.insert(graded.shadow.name);
  return names.size();
}

AcceptedShadow AcceptedFor(const ShadowPair& pair, const GradedShadow& shadow) {
  return {pair.hiding.location, pair.hidden.location, shadow.shadow.name,
          PlaceWithin(pair.hidden.location, shadow.shadow.hidden), shadow.grade};
}

AcceptedShadows AcceptedFor(const std::vector<ShadowPair>& pairs) {
  AcceptedShadows accepted;
  for (const ShadowPair& pair : pairs) {
    for (const GradedShadow& shadow : pair.shadows) accepted.insert(AcceptedFor(pair, shadow));
  }
  return accepted;
}

AcceptedShadows SpelledAsOn(const LoadedPath& path, const AcceptedShadows& accepted) {
  const auto spelled = [&path](const AbsoluteIRI& folder) {
    const EntryPtr entry = path.FindFolder(folder);
    return entry ? entry->GetAbsoluteIRI() : folder;
  };
  AcceptedShadows onPath;
  for (AcceptedShadow shadow : accepted) {
    shadow.hiding = spelled(shadow.hiding);
    shadow.hidden = spelled(shadow.hidden);
    onPath.insert(std::move(shadow));
  }
  return onPath;
}

BaselineEffect LeaveOut(const AcceptedShadows& accepted, std::vector<ShadowPair>& pairs) {
  BaselineEffect effect{0, accepted};
  for (ShadowPair& pair : pairs) {
    effect.leftOut += std::erase_if(pair.shadows, [&](const GradedShadow& shadow) {
      const AcceptedShadow finding = AcceptedFor(pair, shadow);
      effect.gone.erase(finding);
      return accepted.contains(finding);
    });
  }
  std::erase_if(pairs, [](const ShadowPair& pair) { return pair.shadows.empty(); });
  return effect;
}

}  // namespace vornixpath
