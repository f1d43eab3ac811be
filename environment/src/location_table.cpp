#include "location_table.hpp"

#include <algorithm>
#include <fl/filesystem/case_folding.hpp>
#include <stdexcept>

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;
using PathManagement::FilenameMatchingPolicy;

LocationTable::LocationTable(const std::vector<std::shared_ptr<const FolderEntry>>& mainEntries,
                             const std::vector<Position>& positions) {
  for (std::size_t i = 0; i < mainEntries.size(); ++i) {
    const auto ordinal = static_cast<Ordinal>(slots_.size());
    Add(mainEntries[i], kNoOrdinal, ordinal, positions.empty() ? static_cast<Position>(i) : positions[i]);
  }
  slots_.shrink_to_fit();

  spelled_.Reserve(slots_.size());
  for (const Ordinal ordinal : MainEntriesFirst()) {
    const FolderEntry& entry = *slots_[ordinal].entry;
    spelled_.Add(entry.GetLocation(), ordinal);
    comparesExactlyEverywhere_ &= entry.ComparesExactly(FilenameMatchingPolicy::Native);
    if (!(entry.GetCanonicalLocation() == entry.GetLocation())) canonical_.Add(entry.GetCanonicalLocation(), ordinal);
  }
}

// Depth is bounded by the reader, so recursion is too.
void LocationTable::Add(const std::shared_ptr<const FolderEntry>& entry, Ordinal parent, Ordinal main,
                        Position position) {
  if (slots_.size() >= kNoOrdinal) throw std::length_error("the path has more than four billion entries");
  const auto ordinal = static_cast<Ordinal>(slots_.size());
  slots_.push_back(
      {entry, entry->GetLocation(), entry->GetNames().GetView(), parent, main, position, entry->GetEntryType()});
  for (const auto& child : entry->GetChildren()) Add(child, ordinal, main, position);
}

LocationTable::Ordinals LocationTable::MainEntriesFirst() const {
  Ordinals ordinals(slots_.size());
  for (std::size_t i = 0; i < ordinals.size(); ++i) ordinals[i] = static_cast<Ordinal>(i);
  std::stable_partition(ordinals.begin(), ordinals.end(),
                        [this](Ordinal ordinal) { return slots_[ordinal].parent == kNoOrdinal; });
  return ordinals;
}

void LocationTable::Places::Add(const AbsoluteIRI& location, Ordinal ordinal) {
  const auto [first, isNew] = first_.emplace(location, ordinal);
  if (isNew) return;
  Ordinals& all = shared_[location];
  if (all.empty()) all.push_back(first->second);
  all.push_back(ordinal);
}

std::span<const Ordinal> LocationTable::Places::At(const AbsoluteIRI& location) const {
  if (!shared_.empty()) {
    const auto all = shared_.find(location);
    if (all != shared_.end()) return all->second;
  }
  const auto first = first_.find(location);
  if (first == first_.end()) return {};
  return {&first->second, 1};
}

std::optional<Ordinal> LocationTable::Find(const PathManagement::IPathEntry& entry) const {
  const auto ordinals = spelled_.At(entry.GetAbsoluteIRI());
  const auto found = std::find_if(ordinals.begin(), ordinals.end(),
                                  [&](Ordinal ordinal) { return slots_[ordinal].entry.get() == &entry; });
  if (found == ordinals.end()) return std::nullopt;
  return *found;
}

std::span<const Ordinal> LocationTable::OrdinalsUnder(FilenameMatchingPolicy policy,
                                                      const AbsoluteIRI& location) const {
  const bool isExact = policy == FilenameMatchingPolicy::CaseSensitive ||
                       (policy != FilenameMatchingPolicy::CaseInsensitive && comparesExactlyEverywhere_);
  if (isExact) return {};

  const ByFoldedLocation& folded = byFoldedLocation_.Get([this] { return FoldLocations(); });
  const auto found = folded.find(fl::filesystem::fold_case(location.toString()));
  if (found == folded.end()) return {};
  return found->second;
}

LocationTable::ByFoldedLocation LocationTable::FoldLocations() const {
  ByFoldedLocation folded;
  for (const Ordinal ordinal : MainEntriesFirst()) {
    folded[fl::filesystem::fold_case(slots_[ordinal].entry->GetAbsoluteIRI().toString())].push_back(ordinal);
  }
  return folded;
}

}  // namespace Quorvex::PathEnvironment
