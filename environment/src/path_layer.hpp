// Entries of a path with all that is needed to find something among them.
#pragma once

#include <algorithm>
#include <memory>
#include <optional>
#include <search_path_interfaces/found_item.hpp>
#include <search_path_interfaces/search_target.hpp>
#include <vector>

#include "folder_name_index.hpp"
#include "lazy.hpp"
#include "location_table.hpp"
#include "name_index.hpp"

namespace Quorvex::PathEnvironment {

/// Main entries in path order, what is below them, and the indexes over both. A path is one layer, or one over another
/// that it has some positions in common with. Immutable, safe from any thread.
///
/// Names are given plain, without folders. `admits(slot)` tells whether an entry is asked at all; it may be costly, and
/// is called late.
class PathLayer {
 public:
  using Slot = LocationTable::Slot;
  using Target = PathManagement::detail::SearchTarget;
  using Policy = PathManagement::FilenameMatchingPolicy;

  struct Hit {
    const Slot* slot = nullptr;
    std::shared_ptr<const PathManagement::PathItem> item;
  };

  explicit PathLayer(const std::vector<std::shared_ptr<const FolderEntry>>& mainEntries,
                     const std::vector<Position>& positions = {});

  [[nodiscard]] const LocationTable& GetTable() const noexcept { return table_; }
  [[nodiscard]] const std::vector<Slot>& GetSlots() const noexcept { return table_.GetSlots(); }
  [[nodiscard]] const std::shared_ptr<const FolderEntry>& EntryAt(Ordinal ordinal) const {
    return GetSlots()[ordinal].entry;
  }

  /// The first item, in path order, that an admitted entry finds for `target`.
  template <class Admits>
  [[nodiscard]] Hit FindFirst(const Target& target, Policy policy, const Admits& admits) const;

  /// Whether all that `target` can match under `policy` stands under its name in one index of exact names.
  [[nodiscard]] bool IsExact(const Target& target, Policy policy) const noexcept {
    return ComparesExactly(policy) && IsCutAsNamesAre(target);
  }

  /// FindFirst for a target that is exact, in two steps: what bears its name, which most often is nothing, and which of
  /// that is the first match.
  [[nodiscard, gnu::always_inline]] const NameIndex::Posting* FirstPostingOf(const Target& target) const {
    return exactIndex_.FindFirst(target.GetBaseName());
  }
  template <class Admits>
  [[nodiscard]] Hit Choose(const NameIndex::Posting& first, const Target& target, const Admits& admits) const;

  /// Visits the slots of the admitted entries that can hold what `target` matches, in path order, until `visit` returns
  /// true.
  template <class Admits, class Visit>
  void ForEachHolder(const Target& target, Policy policy, const Admits& admits, const Visit& visit) const;

  /// False when surely no class folder bears `name`: most names cost no hash to find that out.
  [[nodiscard]] bool MayHoldClassFolder(const std::u16string& name, Policy policy) const noexcept {
    return !ComparesExactly(policy) || exactIndex_.MayHoldClassFolder(name);
  }

  /// Visits the slots of the admitted class folders of this name, written without '@', in path order.
  template <class Admits, class Visit>
  void ForEachClassFolder(const std::u16string& name, Policy policy, const Admits& admits, const Visit& visit) const;

  /// The entries whose folder may bear `name`, all when it is empty, in path order.
  template <class Visit>
  void ForEachFolderThatMayBear(const std::u16string& name, const Visit& visit) const;

 private:
  // Whether all that `target` can match stands in the index under its very base name: names are cut before the last
  // dot, unless that comes first, and a target may be cut elsewhere. An extension with a dot inside would make one in a
  // base name, so it matters only where there are such names.
  [[nodiscard]] bool IsCutAsNamesAre(const Target& target) const noexcept {
    const std::u16string& name = target.GetBaseName();
    if (name.empty()) return false;
    for (const std::u16string_view extension : target.GetExtensions()) {
      const bool isCutElsewhere = extension.empty()
                                      ? HasDotAfterFirst(name)
                                      : extension[0] != u'.' || (hasDottedBaseNames_ && HasDotAfterFirst(extension));
      if (isCutElsewhere) return false;
    }
    return true;
  }
  [[nodiscard]] static bool HasDotAfterFirst(std::u16string_view text) noexcept {
    return text.find(u'.', 1) != std::u16string_view::npos;
  }

  // Whether the files that match a target under the policy all stand under one key of the exact index.
  [[nodiscard]] bool ComparesExactly(Policy policy) const noexcept {
    if (policy == Policy::CaseSensitive) return true;
    return policy != Policy::CaseInsensitive && comparesExactlyEverywhere_;
  }
  [[nodiscard]] const NameIndex& IndexFor(Policy policy) const {
    return ComparesExactly(policy) ? exactIndex_ : FoldedIndex();
  }
  [[nodiscard]] const NameIndex& FoldedIndex() const;
  [[nodiscard]] std::vector<Ordinal> HoldersOf(const Target& target, const NameIndex& index) const;
  [[nodiscard]] Hit HitAt(const NameIndex::Posting& posting) const;
  [[nodiscard]] std::size_t RankOf(const NameIndex::Posting& posting,
                                   const std::vector<std::u16string>& extensions) const;

  LocationTable table_;
  NameIndex exactIndex_;
  Lazy<NameIndex> foldedIndex_;
  Lazy<FolderNameIndex> folderNames_;
  bool comparesExactlyEverywhere_;
  bool hasDottedBaseNames_;
};

template <class Admits>
PathLayer::Hit PathLayer::FindFirst(const Target& target, Policy policy, const Admits& admits) const {
  if (IsExact(target, policy)) {
    const NameIndex::Posting* const first = FirstPostingOf(target);
    return first == nullptr ? Hit() : Choose(*first, target, admits);
  }

  Hit hit;
  ForEachHolder(target, policy, admits, [&](const Slot& slot) {
    hit = {&slot, slot.entry->FindFirst(target, policy)};
    return hit.item != nullptr;
  });
  return hit.item ? hit : Hit();
}

// What FolderEntry::FindFirst finds, without asking it: the postings of the name already tell the items that can match,
// so the extensions decide. This is the one place where a lookup does not ask the entry, and the reason why it is
// quick.
template <class Admits>
PathLayer::Hit PathLayer::Choose(const NameIndex::Posting& first, const Target& target, const Admits& admits) const {
  const std::vector<std::u16string>& extensions = target.GetExtensions();
  const NameIndex::Posting* best = nullptr;
  std::size_t bestRank = extensions.size();
  const auto isDecided = [&](const NameIndex::Posting& posting) {
    if (best != nullptr && best->entry != posting.entry) return true;
    const std::size_t rank = RankOf(posting, extensions);
    if (rank < bestRank && admits(GetSlots()[posting.entry])) {
      best = &posting;
      bestRank = rank;
    }
    return bestRank == 0 && best != nullptr;
  };
  if (!isDecided(first)) {
    const auto others = exactIndex_.OthersLike(first);
    static_cast<void>(std::any_of(others.begin(), others.end(), isDecided));
  }
  return best == nullptr ? Hit() : HitAt(*best);
}

template <class Admits, class Visit>
void PathLayer::ForEachHolder(const Target& target, Policy policy, const Admits& admits, const Visit& visit) const {
  if (target.GetBaseName().empty()) return;
  for (const Ordinal ordinal : HoldersOf(target, IndexFor(policy))) {
    const Slot& slot = GetSlots()[ordinal];
    if (admits(slot) && visit(slot)) return;
  }
}

template <class Admits, class Visit>
void PathLayer::ForEachClassFolder(const std::u16string& name, Policy policy, const Admits& admits,
                                   const Visit& visit) const {
  if (name.empty() || !MayHoldClassFolder(name, policy)) return;
  const NameIndex& index = IndexFor(policy);
  const NameIndex::Posting* const first = index.FindFirst(name);
  if (first == nullptr) return;

  const auto visitClass = [&](const NameIndex::Posting& posting) {
    const Slot& slot = GetSlots()[posting.entry];
    if (posting.IsClassFolder() && admits(slot)) visit(slot);
  };
  visitClass(*first);
  for (const NameIndex::Posting& posting : index.OthersLike(*first)) visitClass(posting);
}

template <class Visit>
void PathLayer::ForEachFolderThatMayBear(const std::u16string& name, const Visit& visit) const {
  if (name.empty()) {
    for (const Slot& slot : GetSlots()) visit(slot);
    return;
  }
  const auto& folders = folderNames_.Get([this] { return FolderNameIndex(GetSlots()); });
  for (const Ordinal ordinal : folders.Find(name)) visit(GetSlots()[ordinal]);
}

}  // namespace Quorvex::PathEnvironment
