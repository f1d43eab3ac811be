#include "location_table.hpp"

#include <algorithm>
#include <fl/filesystem/case_folding.hpp>
#include <stdexcept>

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;
using PathManagement::FilenameMatchingPolicy;

namespace {

std::optional<Ordinal> FindIn(const boost::unordered_flat_map<AbsoluteIRI, Ordinal>& ordinals,
                              const AbsoluteIRI& location) {
  const auto found = ordinals.find(location);
  if (found == ordinals.end()) return std::nullopt;
  return found->second;
}

}  // namespace

LocationTable::LocationTable(const std::vector<std::shared_ptr<const FolderEntry>>& mainEntries) {
  for (const auto& entry : mainEntries) {
    const auto ordinal = static_cast<Ordinal>(slots_.size());
    Add(entry, kNoOrdinal, ordinal);
  }
  slots_.shrink_to_fit();
  IndexLocations(MainEntriesFirst());
}

// Depth is bounded by the reader, so recursion is too.
void LocationTable::Add(const std::shared_ptr<const FolderEntry>& entry, Ordinal parent, Ordinal main) {
  if (slots_.size() >= kNoOrdinal) throw std::length_error("the path has more than four billion entries");
  const auto ordinal = static_cast<Ordinal>(slots_.size());
  slots_.push_back({entry, parent, main});
  for (const auto& child : entry->GetChildren()) Add(child, ordinal, main);
}

LocationTable::Ordinals LocationTable::MainEntriesFirst() const {
  Ordinals ordinals(slots_.size());
  for (std::size_t i = 0; i < ordinals.size(); ++i) ordinals[i] = static_cast<Ordinal>(i);
  std::stable_partition(ordinals.begin(), ordinals.end(),
                        [this](Ordinal ordinal) { return slots_[ordinal].parent == kNoOrdinal; });
  return ordinals;
}

void LocationTable::IndexLocations(const Ordinals& mainEntriesFirst) {
  nextAtSameLocation_.assign(slots_.size(), kNoOrdinal);
  byLocation_.reserve(slots_.size());
  for (const Ordinal ordinal : mainEntriesFirst) {
    const FolderEntry& entry = *slots_[ordinal].entry;

    const auto [first, isNew] = byLocation_.emplace(entry.GetAbsoluteIRI(), ordinal);
    if (!isNew) {
      nextAtSameLocation_[ordinal] = nextAtSameLocation_[first->second];
      nextAtSameLocation_[first->second] = ordinal;
    }
    if (!(entry.GetCanonicalLocation() == entry.GetAbsoluteIRI())) {
      byCanonicalLocation_.emplace(entry.GetCanonicalLocation(), ordinal);
    }
  }
}

std::optional<Ordinal> LocationTable::Find(const PathManagement::IPathEntry& entry) const {
  const auto first = FindIn(byLocation_, entry.GetAbsoluteIRI());
  for (Ordinal ordinal = first.value_or(kNoOrdinal); ordinal != kNoOrdinal; ordinal = nextAtSameLocation_[ordinal]) {
    if (slots_[ordinal].entry.get() == &entry) return ordinal;
  }
  return std::nullopt;
}

std::optional<Ordinal> LocationTable::FindLocation(const AbsoluteIRI& location) const {
  if (const auto spelled = FindIn(byLocation_, location)) return spelled;
  return FindIn(byCanonicalLocation_, location);
}

std::optional<Ordinal> LocationTable::FindLocationUnder(FilenameMatchingPolicy policy,
                                                        const AbsoluteIRI& location) const {
  if (policy == FilenameMatchingPolicy::CaseSensitive) return std::nullopt;

  const ByFoldedLocation& folded = byFoldedLocation_.Get([this] { return FoldLocations(); });
  const auto found = folded.find(fl::filesystem::fold_case(location.toString()));
  if (found == folded.end()) return std::nullopt;

  const auto match = std::find_if(found->second.begin(), found->second.end(),
                                  [&](Ordinal ordinal) { return !slots_[ordinal].entry->ComparesExactly(policy); });
  if (match == found->second.end()) return std::nullopt;
  return *match;
}

LocationTable::ByFoldedLocation LocationTable::FoldLocations() const {
  ByFoldedLocation folded;
  for (const Ordinal ordinal : MainEntriesFirst()) {
    folded[fl::filesystem::fold_case(slots_[ordinal].entry->GetAbsoluteIRI().toString())].push_back(ordinal);
  }
  return folded;
}

}  // namespace Quorvex::PathEnvironment
