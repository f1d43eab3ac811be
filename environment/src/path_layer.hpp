// Entries of a path with all that is needed to find something among them.
#pragma once

#include <algorithm>
#include <memory>
#include <optional>
#include <search_path_interfaces/found_item.hpp>
#include <search_path_interfaces/search_target.hpp>
#include <span>
#include <utility>
#include <vector>

#include "class_folder_index.hpp"
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
  [[nodiscard, gnu::always_inline]] bool IsExact(const Target& target, Policy policy) const noexcept {
    return ComparesExactly(policy) && (IsPlainlyCut(target) || IsCutAsNamesAre(target));
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

  /// False for most names that are of no class.
  [[nodiscard, gnu::always_inline]] bool MayHoldClass(const std::u16string& name, Policy policy) const noexcept {
    return !ComparesExactly(policy) || exactClasses_.MayHold(name);
  }

  /// The class folders of this name, written without '@', in path order, and under a policy that ignores letter case
  /// perhaps some more.
  [[nodiscard]] std::span<const Ordinal> ClassFoldersOf(const std::u16string& name, Policy policy) const {
    return ComparesExactly(policy) ? exactClasses_.Find(name) : FoldedClasses().Find(name);
  }

  /// FindFirst among the entries whose folder may bear `folderName`, or among all when it is empty: by the files' name
  /// or by the folders', whichever is rarer.
  template <class Admits>
  [[nodiscard]] Hit FindFirstInFolders(const std::u16string& folderName, const Target& target, Policy policy,
                                       const Admits& admits) const;

  /// The entries whose folder may bear `name`, all when it is empty, in path order.
  template <class Visit>
  void ForEachFolderThatMayBear(const std::u16string& name, const Visit& visit) const;

 private:
  // Whether all that `target` can match stands in the index under its very base name: names are cut before the last
  // dot, unless that comes first, and a target may be cut elsewhere. An extension with a dot inside would make one in a
  // base name, so it matters only where there are such names.
  [[nodiscard, gnu::noinline]] bool IsCutAsNamesAre(const Target& target) const noexcept {
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
  // The same for most targets, without a loop. (An empty extension has a zero where a character would be.)
  [[nodiscard, gnu::always_inline]] bool IsPlainlyCut(const Target& target) const noexcept {
    const std::vector<std::u16string>& extensions = target.GetExtensions();
    return !hasDottedBaseNames_ && extensions.size() == 1 && extensions.front()[0] == u'.';
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
  [[nodiscard]] const ClassFolderIndex& FoldedClasses() const;
  [[nodiscard]] static std::vector<std::u16string> KeysOf(const Target& target);
  [[nodiscard]] static std::vector<Ordinal> HoldersOfAny(const std::vector<std::u16string>& keys,
                                                         const NameIndex& index);
  template <class Admits, class Visit>
  void ForEachHolderOf(const std::u16string& key, const NameIndex& index, const Admits& admits,
                       const Visit& visit) const;
  [[nodiscard]] std::size_t CountFilesOf(const Target& target, Policy policy) const;
  [[nodiscard]] std::span<const Ordinal> FoldersOf(const std::u16string& name) const;
  [[nodiscard]] Hit HitAt(const NameIndex::Posting& posting) const;
  [[nodiscard]] std::size_t RankOf(const NameIndex::Posting& posting,
                                   const std::vector<std::u16string>& extensions) const;

  LocationTable table_;
  NameIndex exactIndex_;
  ClassFolderIndex exactClasses_;
  Lazy<NameIndex> foldedIndex_;
  Lazy<ClassFolderIndex> foldedClasses_;
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
  const NameIndex& index = IndexFor(policy);
  const std::vector<std::u16string> keys = KeysOf(target);
  if (keys.size() == 1) return ForEachHolderOf(keys.front(), index, admits, visit);

  for (const Ordinal ordinal : HoldersOfAny(keys, index)) {
    const Slot& slot = GetSlots()[ordinal];
    if (admits(slot) && visit(slot)) return;
  }
}

// One after another, so that a walk that ends early has not seen the rest.
template <class Admits, class Visit>
void PathLayer::ForEachHolderOf(const std::u16string& key, const NameIndex& index, const Admits& admits,
                                const Visit& visit) const {
  const NameIndex::Posting* const first = index.FindFirst(key);
  if (first == nullptr) return;

  Ordinal last = kNoOrdinal;
  const auto isDone = [&](const NameIndex::Posting& posting) {
    if (posting.entry == last) return false;  // another file of the same base name
    last = posting.entry;
    const Slot& slot = GetSlots()[last];
    return admits(slot) && visit(slot);
  };
  if (isDone(*first)) return;
  const auto others = index.OthersLike(*first);
  static_cast<void>(std::any_of(others.begin(), others.end(), isDone));
}

template <class Admits>
PathLayer::Hit PathLayer::FindFirstInFolders(const std::u16string& folderName, const Target& target, Policy policy,
                                             const Admits& admits) const {
  if (folderName.empty()) return FindFirst(target, policy, admits);
  constexpr std::size_t few = 4;  // not worth counting the files
  std::span<const Ordinal> folders;
  if (IsExact(target, policy)) {
    const NameIndex::Posting* const first = FirstPostingOf(target);
    if (first == nullptr) return {};
    if (first->hasOthers == 0) return Choose(*first, target, admits);
    folders = FoldersOf(folderName);
    if (folders.size() > few && folders.size() > exactIndex_.OthersLike(*first).size())
      return Choose(*first, target, admits);
  } else {
    folders = FoldersOf(folderName);
    if (folders.size() > few && folders.size() >= CountFilesOf(target, policy))
      return FindFirst(target, policy, admits);
  }

  for (const Ordinal ordinal : folders) {
    const Slot& slot = GetSlots()[ordinal];
    if (!admits(slot)) continue;
    if (auto item = slot.entry->FindFirst(target, policy)) return {&slot, std::move(item)};
  }
  return {};
}

template <class Visit>
void PathLayer::ForEachFolderThatMayBear(const std::u16string& name, const Visit& visit) const {
  if (name.empty()) {
    for (const Slot& slot : GetSlots()) visit(slot);
    return;
  }
  for (const Ordinal ordinal : FoldersOf(name)) visit(GetSlots()[ordinal]);
}

}  // namespace Quorvex::PathEnvironment
