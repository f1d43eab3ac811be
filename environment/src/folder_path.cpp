// The leaf path: a layer of entries, and perhaps some small ones over it with the folders that were replaced since.
// Every question goes to all of them; of a folder only the newest that holds it knows.

#include <algorithm>
#include <fl/filesystem/displayed_text.hpp>
#include <iterator>
#include <search_path_environment/folder_path.hpp>
#include <search_path_interfaces/constants.hpp>
#include <search_path_utilities/lookup.hpp>
#include <stdexcept>
#include <utility>

#include "collected_problems.hpp"
#include "folder_matcher.hpp"
#include "lazy.hpp"
#include "path_layer.hpp"
#include "replaced_folders.hpp"

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::CanonicalAbsoluteIRI;
using PathManagement::FilenameMatchingPolicy;
using PathManagement::FoundItem;
using PathManagement::IPathEntry;
using PathManagement::PathEntryCallback;
using PathManagement::SearchScope;
using PathManagement::detail::SearchTarget;

namespace {

using EntryPtr = FolderPath::EntryPtr;
using FolderEntryPtr = std::shared_ptr<const FolderEntry>;
using Slot = LocationTable::Slot;

// What was found in a layer, with the position by which layers are merged.
template <class T>
struct Placed {
  Position position;
  T value;
};

void RequireMainEntry(const FolderEntry& entry) {
  if (entry.GetEntryType() == PathManagement::PathEntryType::Main) return;
  throw std::invalid_argument("the entry of \"" + fl::filesystem::to_displayed_text(entry.GetLocation().toString()) +
                              "\" is no main entry");
}

// A path's own layer takes the replaced folders in when more than one in so many is replaced.
constexpr std::size_t kShareOfReplacedFolders = 16;

struct AnyFolder {
  static bool Matches(const FolderEntryPtr& /*entry*/) { return true; }
};

// A target that names folders, too, taken apart.
class PartialTarget {
 public:
  PartialTarget(const PartialTarget&) = delete;
  PartialTarget& operator=(const PartialTarget&) = delete;
  ~PartialTarget() = default;
  PartialTarget(const SearchTarget& target, FilenameMatchingPolicy policy)
      : PartialTarget(target, target.GetBaseName().find_last_of(PathManagement::Constants::PathnameSeparatorStr) + 1,
                      policy) {}

 private:
  PartialTarget(const SearchTarget& target, std::size_t lengthOfFolders, FilenameMatchingPolicy policy)
      : name_(target.GetBaseName().substr(lengthOfFolders)),
        plain(name_, target.GetExtensions()),
        folders(std::u16string_view(target.GetBaseName()).substr(0, lengthOfFolders), policy) {}

  std::u16string name_;

 public:
  SearchTarget plain;
  FolderMatcher folders;
};

}  // namespace

// What does not change from one version of a path to the next.
struct FolderPath::List {
  std::vector<std::size_t> positions;  // of the folders on the path as it was given
  std::vector<PathProblem> problems;   // of the list itself
};

struct FolderPath::State {
  std::shared_ptr<const List> list;
  std::shared_ptr<const PathLayer> base;
  std::shared_ptr<const ReplacedFolders> replaced;  // null when nothing was

  Lazy<std::shared_ptr<const std::vector<EntryPtr>>> mainEntries;
  Lazy<std::vector<PathProblem>> problems;

  bool IsReplaced(Position position) const { return replaced && replaced->Hold(position); }

  // Calls `ask(layer, isAlive)` for each layer.
  template <class Ask>
  void ForEachLayer(const Ask& ask) const {
    ask(*base, [this](const Slot& slot) { return !IsReplaced(slot.position); });
    if (replaced) replaced->ForEachLevel(ask);
  }

  // What `collect(layer, isAlive, add)` adds, by position, in all layers, in path order.
  template <class T, class Collect>
  std::vector<T> InPathOrder(const Collect& collect) const {
    std::vector<T> values;
    if (!replaced) {
      collect(
          *base, [](const Slot& /*slot*/) { return true; },
          [&values](Position /*position*/, T value) { values.push_back(std::move(value)); });
      return values;
    }
    std::vector<Placed<T>> placed;
    ForEachLayer([&](const PathLayer& layer, const auto& isAlive) {
      collect(layer, isAlive, [&placed](Position position, T value) {
        placed.push_back({position, std::move(value)});
      });
    });
    // A position is alive in one layer only, and there its values are in order.
    std::stable_sort(placed.begin(), placed.end(),
                     [](const auto& left, const auto& right) { return left.position < right.position; });
    std::transform(placed.begin(), placed.end(), std::back_inserter(values),
                   [](Placed<T>& found) { return std::move(found.value); });
    return values;
  }

  // The main entries in path order.
  std::vector<FolderEntryPtr> MainEntries() const {
    return InPathOrder<FolderEntryPtr>([](const PathLayer& layer, const auto& isAlive, const auto& add) {
      for (const Slot& slot : layer.GetSlots()) {
        if (slot.parent == kNoOrdinal && isAlive(slot)) add(slot.position, slot.entry);
      }
    });
  }

  // Of the main entry that is spelled like this.
  Position PositionOf(const AbsoluteIRI& location) const {
    const auto match = base->GetTable().FindLocation(
        location, [&](const Slot& slot) { return slot.parent == kNoOrdinal && slot.entry->GetLocation() == location; });
    if (match) return match->position;
    throw std::invalid_argument("\"" + fl::filesystem::to_displayed_text(location.toString()) +
                                "\" is no folder of the path");
  }

  // The state of the version in which `replacing` stand at their positions.
  std::unique_ptr<const State> With(const ReplacedFolders::Entries& replacing) const {
    auto state = std::make_unique<State>();
    state->list = list;
    state->base = base;
    state->replaced = replaced;
    if (replacing.empty()) return state;

    const std::size_t limit = list->positions.size() / kShareOfReplacedFolders;
    if (const auto all = (replaced ? *replaced : ReplacedFolders()).With(replacing, limit)) {
      state->replaced = std::make_shared<const ReplacedFolders>(*all);
      return state;
    }
    std::vector<FolderEntryPtr> entries = MainEntries();
    for (const auto& [position, entry] : replacing) entries[position] = entry;
    state->base = std::make_shared<const PathLayer>(entries);
    state->replaced = nullptr;
    return state;
  }

  struct Place {
    const PathLayer* layer;
    const Slot* slot;
  };

  std::optional<Place> Find(const IPathEntry& entry) const {
    std::optional<Place> place;
    ForEachLayer([&](const PathLayer& layer, const auto& isAlive) {
      const auto ordinal = layer.GetTable().Find(entry);
      if (ordinal && isAlive(layer.GetSlots()[*ordinal])) place = Place{&layer, &layer.GetSlots()[*ordinal]};
    });
    return place;
  }

  // The best of what `find(table, isAlive)` matches in the layers.
  template <class FindMatch>
  EntryPtr BestMatch(const FindMatch& find) const {
    std::optional<LocationTable::Match> best;
    EntryPtr entry;
    ForEachLayer([&](const PathLayer& layer, const auto& isAlive) {
      const std::optional<LocationTable::Match> match = find(layer.GetTable(), isAlive);
      if (!match || (best && *best < *match)) return;
      best = match;
      entry = layer.EntryAt(match->ordinal);
    });
    return entry;
  }

  EntryPtr AtLocation(const AbsoluteIRI& location) const {
    return BestMatch(
        [&](const LocationTable& table, const auto& isAlive) { return table.FindLocation(location, isAlive); });
  }

  [[gnu::noinline]] std::vector<EntryPtr> ClassFolders(SearchScope scope, const std::u16string& name,
                                                       FilenameMatchingPolicy policy) const {
    return InPathOrder<EntryPtr>([&](const PathLayer& layer, const auto& isAlive, const auto& add) {
      for (const Ordinal ordinal : layer.ClassFoldersOf(name, policy)) {
        const Slot& slot = layer.GetSlots()[ordinal];
        const Slot& parent = layer.GetSlots()[slot.parent];
        if (!isAlive(slot) || !scope.Contains(parent.kind)) continue;

        const bool matches = (*parent.entry->GetFilenameComparator(policy))(name, slot.location.getName().substr(1));
        if (matches) add(slot.position, slot.entry);
      }
    });
  }

  [[gnu::noinline]] boost::optional<FoundItem> FindFirstPartially(SearchScope scope, const SearchTarget& target,
                                                                  FilenameMatchingPolicy policy) const {
    const PartialTarget partial(target, policy);
    return FirstInLayers(scope, [&](const PathLayer& layer, const auto& admits) {
      return layer.FindFirstInFolders(partial.folders.GetLastName(), partial.plain, policy, [&](const Slot& slot) {
        return admits(slot) && partial.folders.Matches(slot.entry);
      });
    });
  }

  // `target` is a plain name.
  [[gnu::noinline]] boost::optional<FoundItem> FindFirst(SearchScope scope, const SearchTarget& target,
                                                         FilenameMatchingPolicy policy) const {
    return FirstInLayers(
        scope, [&](const PathLayer& layer, const auto& admits) { return layer.FindFirst(target, policy, admits); });
  }

  // The earlier one of what `find(layer, admits)` finds in the layers.
  template <class Find>
  boost::optional<FoundItem> FirstInLayers(SearchScope scope, const Find& find) const {
    if (!replaced) return Found(find(*base, [scope](const Slot& slot) { return scope.Contains(slot.kind); }));

    PathLayer::Hit first;
    ForEachLayer([&](const PathLayer& layer, const auto& isAlive) {
      PathLayer::Hit hit = find(layer, [&](const Slot& slot) { return scope.Contains(slot.kind) && isAlive(slot); });
      if (hit.item && (!first.item || hit.slot->position < first.slot->position)) first = std::move(hit);
    });
    return Found(std::move(first));
  }

  // The rest of a lookup of a plain name in a path of one layer. Out of line, so that a miss does not pay for it.
  [[gnu::noinline]] boost::optional<FoundItem> FindAmongBearers(const NameIndex::Posting& first, SearchScope scope,
                                                                const SearchTarget& target) const {
    return Found(base->Choose(first, target, [scope](const Slot& slot) { return scope.Contains(slot.kind); }));
  }

  static boost::optional<FoundItem> Found(PathLayer::Hit hit) {
    if (!hit.item) return boost::none;
    return FoundItem(std::move(hit.item), hit.slot->entry);
  }

  template <class Folders>
  std::vector<FoundItem> FindAll(SearchScope scope, const SearchTarget& target, FilenameMatchingPolicy policy,
                                 const Folders& folders) const {
    return InPathOrder<FoundItem>([&](const PathLayer& layer, const auto& isAlive, const auto& add) {
      const auto admits = [&](const Slot& slot) {
        return scope.Contains(slot.kind) && isAlive(slot) && folders.Matches(slot.entry);
      };
      layer.ForEachHolder(target, policy, admits, [&](const Slot& slot) {
        for (auto& item : slot.entry->FindAll(target, policy)) {
          add(slot.position, FoundItem(std::move(item), slot.entry));
        }
        return false;
      });
    });
  }
};

FolderPath::FolderPath(const std::vector<Folder>& folders, std::vector<PathProblem> problems) {
  auto list = std::make_shared<List>();
  list->problems = std::move(problems);
  std::vector<FolderEntryPtr> entries;
  for (const Folder& folder : folders) {
    RequireMainEntry(*folder.entry);
    entries.push_back(folder.entry);
    list->positions.push_back(folder.position);
  }
  auto state = std::make_unique<State>();
  state->list = std::move(list);
  state->base = std::make_shared<const PathLayer>(entries);
  state_ = std::move(state);
}

FolderPath::FolderPath(std::unique_ptr<const State> state) noexcept : state_(std::move(state)) {}

FolderPath::~FolderPath() = default;

std::shared_ptr<const FolderPath> FolderPath::WithReplaced(const std::vector<FolderEntryPtr>& entries) const {
  ReplacedFolders::Entries replacing;
  for (const FolderEntryPtr& entry : entries) {
    RequireMainEntry(*entry);
    replacing[state_->PositionOf(entry->GetLocation())] = entry;
  }
  return std::shared_ptr<const FolderPath>(new FolderPath(state_->With(replacing)));
}

std::shared_ptr<const std::vector<EntryPtr>> FolderPath::GetMainEntries() const {
  return state_->mainEntries.Get([this] {
    const auto entries = state_->MainEntries();
    return std::make_shared<const std::vector<EntryPtr>>(entries.begin(), entries.end());
  });
}

std::vector<EntryPtr> FolderPath::GetMethodEntries() const {
  return state_->InPathOrder<EntryPtr>([](const PathLayer& layer, const auto& isAlive, const auto& add) {
    for (const Slot& slot : layer.GetSlots()) {
      if (slot.parent != kNoOrdinal && isAlive(slot)) add(slot.position, slot.entry);
    }
  });
}

std::vector<EntryPtr> FolderPath::GetMethodEntriesByName(SearchScope scope, const std::u16string& name,
                                                         FilenameMatchingPolicy policy) const {
  if (name.empty() || (!state_->replaced && !state_->base->MayHoldClass(name, policy))) return {};
  return state_->ClassFolders(scope, name, policy);
}

std::vector<EntryPtr> FolderPath::GetPartiallyMatchingEntries(SearchScope scope, const std::u16string& partialPathname,
                                                              FilenameMatchingPolicy policy) const {
  const FolderMatcher folders(partialPathname, policy);
  return state_->InPathOrder<EntryPtr>([&](const PathLayer& layer, const auto& isAlive, const auto& add) {
    layer.ForEachFolderThatMayBear(folders.GetLastName(), [&](const Slot& slot) {
      if (!scope.Contains(slot.kind) || !isAlive(slot) || !folders.Matches(slot.entry)) return;
      add(slot.position, slot.entry);
    });
  });
}

EntryPtr FolderPath::GetMainEntryForEntry(const IPathEntry& entry) const {
  const auto place = state_->Find(entry);
  return place ? place->layer->EntryAt(place->slot->main) : nullptr;
}

EntryPtr FolderPath::GetParentEntryForEntry(const IPathEntry& entry) const {
  const auto place = state_->Find(entry);
  return place && place->slot->parent != kNoOrdinal ? place->layer->EntryAt(place->slot->parent) : nullptr;
}

EntryPtr FolderPath::GetPathEntryFromAbsoluteIRI(const AbsoluteIRI& location, FilenameMatchingPolicy policy) const {
  if (EntryPtr entry = state_->AtLocation(location)) return entry;
  return state_->BestMatch([&](const LocationTable& table, const auto& isAlive) {
    return table.FindLocationUnder(policy, location, isAlive);
  });
}

EntryPtr FolderPath::GetPathEntryFromAbsoluteIRI(const CanonicalAbsoluteIRI& location) const {
  return state_->AtLocation(location.getAbsoluteIRI());
}

boost::optional<FoundItem> FolderPath::FindFirstInScope(SearchScope scope, const SearchTarget& target,
                                                        FilenameMatchingPolicy policy) const {
  if (PathManagement::IsPartialPathname(target.GetBaseName())) return state_->FindFirstPartially(scope, target, policy);
  if (state_->replaced || !state_->base->IsExact(target, policy)) {
    return state_->FindFirst(scope, target, policy);
  }
  // By far the most names are plain, and many of those that are asked for are not there: this is their short way.
  const NameIndex::Posting* const first = state_->base->FirstPostingOf(target);
  if (first == nullptr) return boost::none;
  return state_->FindAmongBearers(*first, scope, target);
}

std::vector<FoundItem> FolderPath::FindAllInScope(SearchScope scope, const SearchTarget& target,
                                                  FilenameMatchingPolicy policy) const {
  if (!PathManagement::IsPartialPathname(target.GetBaseName()))
    return state_->FindAll(scope, target, policy, AnyFolder());
  const PartialTarget partial(target, policy);
  return state_->FindAll(scope, partial.plain, policy, partial.folders);
}

bool FolderPath::ForEachEntry(SearchScope scope, const PathEntryCallback& callback) const {
  const auto main = GetMainEntries();
  return std::any_of(main->begin(), main->end(),
                     [&](const EntryPtr& entry) { return entry->ForEachEntryInScope(scope, callback); });
}

bool FolderPath::ConcurrentForEachEntry(SearchScope scope, const PathEntryCallback& callback) const {
  // Everything is in memory: a thread would cost more than the walk.
  return ForEachEntry(scope, callback);
}

bool FolderPath::FirstEntryIsBeforeSecondOnPath(const IPathEntry& first, const IPathEntry& second) const {
  const auto placeOfFirst = state_->Find(first);
  const auto placeOfSecond = state_->Find(second);
  if (!placeOfFirst || !placeOfSecond) return placeOfFirst.has_value() && !placeOfSecond.has_value();
  return placeOfFirst->slot->position < placeOfSecond->slot->position;
}

bool FolderPath::IsEntryOnPath(const IPathEntry& entry) const { return state_->Find(entry).has_value(); }

const std::vector<std::size_t>& FolderPath::GetPositions() const noexcept { return state_->list->positions; }

const std::vector<PathProblem>& FolderPath::GetProblems() const {
  return state_->problems.Get([this] {
    std::vector<PathProblem> problems = state_->list->problems;
    const auto entries = state_->MainEntries();
    for (std::size_t i = 0; i < entries.size(); ++i) {
      CollectProblems(*entries[i], state_->list->positions[i], problems);
    }
    std::stable_sort(problems.begin(), problems.end(),
                     [](const PathProblem& left, const PathProblem& right) { return left.position < right.position; });
    return problems;
  });
}

}  // namespace Quorvex::PathEnvironment
