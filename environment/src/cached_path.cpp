// The short way of a lookup through a toolbox cache, and the long way of all others, which is a leaf path.

#include <algorithm>
#include <atomic>
#include <fl/filesystem/path.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <optional>
#include <search_path_environment/cached_path.hpp>
#include <search_path_environment/distinct_folders.hpp>
#include <search_path_environment/folder_entry_factory.hpp>
#include <search_path_utilities/lookup.hpp>
#include <utility>

#include "cache_index.hpp"
#include "cache_records.hpp"
#include "collected_problems.hpp"
#include "folder_reader.hpp"
#include "lazy.hpp"
#include "parallel.hpp"
#include "path_layer.hpp"

namespace Quorvex::PathEnvironment {

using namespace cache;
using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::CanonicalAbsoluteIRI;
using PathManagement::FilenameMatchingPolicy;
using PathManagement::FoundItem;
using PathManagement::IPathEntry;
using PathManagement::PathEntryCallback;
using PathManagement::PathEntryType;
using PathManagement::SearchScope;
using PathManagement::detail::SearchTarget;

namespace {

using EntryPtr = CachedPath::EntryPtr;
using FolderEntryPtr = std::shared_ptr<const FolderEntry>;

// Main entries by their places.
struct Replaced {
  std::vector<Position> positions;  // rising
  std::optional<PathLayer> layer;   // over them, if there are any

  [[nodiscard]] bool Holds(std::size_t main) const {
    return std::binary_search(positions.begin(), positions.end(), static_cast<Position>(main));
  }
};

// The rows of the list that tell of the first `count` folders and of what was dropped between them.
std::span<const ListedRow> RowsOf(const CacheRecords& records, std::size_t count) {
  const CacheImage& image = records.GetImage();
  const auto rows = image.Rows<ListedRow>(Section::List, 0, image.CountOf<ListedRow>(Section::List));
  if (count == records.CountOfMains()) return rows;
  const auto end = std::find_if(rows.begin(), rows.end(),
                                [count](const ListedRow& row) { return row.dropped == 0 && row.main == count; });
  return rows.first(static_cast<std::size_t>(end - rows.begin()));
}

AbsoluteIRI LocationOfDropped(const CacheRecords& records, const ListedRow& row) {
  try {
    return AbsoluteIRI(fl::filesystem::from_bytes(records.GetImage().TextAt(row.location)));
  } catch (const foundation::storage::vfs::Exception&) {
    CacheImage::Damaged(Section::List);
  }
}

// Whether a later spelling still means the folder that stays.
bool IsStillTheSame(const CacheRecords& records, const ListedRow& row) {
  const auto reason = static_cast<SameFolder>(row.dropped - 1);
  if (reason == SameFolder::ByText) return true;
  if (reason != SameFolder::ByIdentity) return false;  // where links lead, no single question tells
  const AbsoluteIRI location = LocationOfDropped(records, row);
  const EntryRow& staying = records.RowOf(records.OrdinalOfMain(row.main));
  try {
    return records.GetStorage().ProviderFor(location)->Stat(location).identity ==
           foundation::storage::vfs::FileIdentity{staying.device, staying.inode};
  } catch (const foundation::storage::vfs::Exception&) {
    return false;
  }
}

// The places of the folders that must be read; nothing when the list does not hold any more.
std::optional<std::vector<Position>> Unproven(const CacheRecords& records, std::size_t count) {
  std::vector<Standing> standings(count);
  std::atomic<bool> isAnother = false;
  InParallel(count, [&](std::size_t main) {
    if (isAnother.load(std::memory_order_relaxed)) return;
    standings[main] = records.StandingOfMain(main);
    if (standings[main] == Standing::Another) isAnother.store(true, std::memory_order_relaxed);
  });
  const auto rows = RowsOf(records, count);
  const bool holds = !isAnother && std::all_of(rows.begin(), rows.end(), [&](const ListedRow& row) {
    return row.dropped == 0 || IsStillTheSame(records, row);
  });
  if (!holds) return std::nullopt;

  std::vector<Position> unproven;
  for (std::size_t main = 0; main < count; ++main) {
    if (standings[main] != Standing::Proven) unproven.push_back(static_cast<Position>(main));
  }
  return unproven;
}

std::vector<FolderEntryPtr> Read(const CacheRecords& records, const std::vector<Position>& mains) {
  std::vector<FolderEntryPtr> entries(mains.size());
  InParallel(mains.size(), [&](std::size_t i) {
    entries[i] = ReadMainFolder(records.LocationOfMain(mains[i]), records.GetStorage(), nullptr);
  });
  return entries;
}

// The ordinals of the entries that may hold the file called `name` followed by `extension`, which the index cuts its
// own way.
std::vector<std::uint32_t> HoldersOf(const CacheIndex& index, const std::u16string& name,
                                     const std::u16string& extension) {
  const std::u16string fullName = name + extension;
  const std::size_t length = fl::filesystem::detail::extract_extension(fullName).size();
  const std::u16string_view text = fullName;
  return index.HoldersOf(text.substr(0, text.size() - length), text.substr(text.size() - length));
}

// The ordinals of entries that may hold what `target` matches where letter cases count, rising.
std::vector<std::uint32_t> CandidatesFor(const CacheImage& image, const SearchTarget& target) {
  std::vector<std::uint32_t> candidates;
  if (target.GetBaseName().empty()) return candidates;
  const CacheIndex index(image);
  for (const std::u16string& extension : target.GetExtensions()) {
    const auto holders = HoldersOf(index, target.GetBaseName(), extension);
    candidates.insert(candidates.end(), holders.begin(), holders.end());
  }
  std::sort(candidates.begin(), candidates.end());
  candidates.erase(std::unique(candidates.begin(), candidates.end()), candidates.end());
  return candidates;
}

}  // namespace

struct CachedPath::State {
  ToolboxCache cache;
  std::size_t count;
  ReadAnew readAnew;
  std::vector<FolderEntryPtr> read;  // in the order of `replaced`
  Replaced replaced;
  Lazy<std::shared_ptr<const FolderPath>> whole;

  State(const ToolboxCache& usedCache, std::size_t usedCount, ReadAnew usedReadAnew, std::vector<Position> unproven)
      : cache(usedCache), count(usedCount), readAnew(std::move(usedReadAnew)), read(Read(Records(), unproven)) {
    replaced.positions = std::move(unproven);
    if (!read.empty()) replaced.layer.emplace(read, replaced.positions);
  }

  [[nodiscard]] const CacheRecords& Records() const { return cache.GetRecords(); }

  [[nodiscard]] bool IsExact(FilenameMatchingPolicy policy) const {
    if (policy == FilenameMatchingPolicy::CaseSensitive) return true;
    return policy != FilenameMatchingPolicy::CaseInsensitive && Records().GetImage().GetHeader().isExact != 0;
  }

  [[nodiscard]] const FolderEntryPtr& EntryRead(std::size_t main) const {
    const auto place = std::lower_bound(replaced.positions.begin(), replaced.positions.end(), main);
    if (place == replaced.positions.end() || *place != main) CacheImage::Damaged(Section::List);
    return read[static_cast<std::size_t>(place - replaced.positions.begin())];
  }

  // Whether what the records say of this main entry counts.
  [[nodiscard]] bool IsAlive(std::size_t main) const { return main < count && !replaced.Holds(main); }

  [[nodiscard]] const std::shared_ptr<const FolderPath>& Whole() const {
    return whole.Get([this] {
      try {
        return MakeWhole();
      } catch (const ToolboxCacheError&) {
        if (cache.GetTrust() == CacheTrust::Blind) throw;
        return ReadWhole();
      }
    });
  }

  [[nodiscard]] std::shared_ptr<const FolderPath> MakeWhole() const {
    std::vector<FolderPath::Folder> folders(count);
    InParallel(count, [&](std::size_t main) {
      if (IsAlive(main)) folders[main].entry = Records().MainEntry(main);
    });
    for (std::size_t i = 0; i < read.size(); ++i) folders[replaced.positions[i]].entry = read[i];
    const auto rows = RowsOf(Records(), count);
    for (std::size_t position = 0; position < rows.size(); ++position) {
      if (rows[position].dropped != 0) continue;
      if (rows[position].main >= count) CacheImage::Damaged(Section::List);
      folders[rows[position].main].position = position;
    }
    return std::make_shared<const FolderPath>(folders, ProblemsOfList());
  }

  // The cache is damaged: what was handed out stays as far as it is true.
  [[nodiscard]] std::shared_ptr<const FolderPath> ReadWhole() const {
    std::vector<FolderEntryPtr> known = Records().EntriesMade();
    known.insert(known.end(), read.begin(), read.end());
    return readAnew(FolderEntryFactory(Records().GetStorage(), known));
  }

  [[nodiscard]] std::vector<PathProblem> ProblemsOfList() const {
    std::vector<PathProblem> problems;
    const auto rows = RowsOf(Records(), count);
    for (std::size_t position = 0; position < rows.size(); ++position) {
      if (rows[position].dropped == 0) continue;
      problems.push_back({LocationOfDropped(Records(), rows[position]), ProblemKind::Repeated, {}, position});
    }
    return problems;
  }

  [[nodiscard]] std::vector<PathProblem> QuickProblems() const {
    std::vector<PathProblem> problems = ProblemsOfList();
    if (read.empty() && Records().GetImage().SizeOf(Section::Problems) == 0) return problems;
    const auto rows = RowsOf(Records(), count);
    for (std::size_t position = 0; position < rows.size(); ++position) {
      const std::size_t main = rows[position].main;
      if (rows[position].dropped != 0) continue;
      if (IsAlive(main)) {
        Records().AddProblemsOfMain(main, position, problems);
      } else {
        CollectProblems(*EntryRead(main), position, problems);
      }
    }
    std::stable_sort(problems.begin(), problems.end(),
                     [](const PathProblem& left, const PathProblem& right) { return left.position < right.position; });
    return problems;
  }

  // What `quickly()` finds in the records, or, where the whole path is there already or the records are damaged, what
  // `wholly(path)` does.
  template <class Quickly, class Wholly>
  auto Answer(const Quickly& quickly, const Wholly& wholly) const {
    if (whole.GetIfMade() != nullptr) return wholly(*Whole());
    try {
      return quickly();
    } catch (const ToolboxCacheError&) {
      return wholly(*Whole());
    }
  }

  [[nodiscard]] boost::optional<FoundItem> FindFirst(SearchScope scope, const SearchTarget& target,
                                                     FilenameMatchingPolicy policy) const {
    PathLayer::Hit amongRead;
    if (replaced.layer) {
      amongRead = replaced.layer->FindFirst(target, policy,
                                            [scope](const PathLayer::Slot& slot) { return scope.Contains(slot.kind); });
    }
    for (const std::uint32_t ordinal : CandidatesFor(Records().GetImage(), target)) {
      const std::size_t main = Records().MainOf(ordinal);
      if (main >= count || (amongRead.item && main > amongRead.slot->position)) break;
      if (!IsAlive(main) || !scope.Contains(static_cast<PathEntryType>(Records().RowOf(ordinal).kind))) continue;
      const FolderEntryPtr entry = Records().Entry(ordinal);
      if (auto item = entry->FindFirst(target, policy)) return FoundItem(std::move(item), entry);
    }
    if (!amongRead.item) return boost::none;
    return FoundItem(std::move(amongRead.item), amongRead.slot->entry);
  }

  [[nodiscard]] std::vector<EntryPtr> ClassFolders(SearchScope scope, const std::u16string& name,
                                                   FilenameMatchingPolicy policy) const {
    std::vector<std::pair<std::size_t, EntryPtr>> found;  // with the place of the main entry
    for (const std::uint32_t ordinal : CacheIndex(Records().GetImage()).ClassFoldersOf(name)) {
      const std::size_t main = Records().MainOf(ordinal);
      if (!IsAlive(main)) continue;
      const EntryRow& row = Records().RowOf(ordinal);
      if (row.parent == kNone) CacheImage::Damaged(Section::Entries);
      if (!scope.Contains(static_cast<PathEntryType>(Records().RowOf(row.parent).kind))) continue;
      FolderEntryPtr entry = Records().Entry(ordinal);
      if (entry->GetLocation().getName().substr(1) == name) found.emplace_back(main, std::move(entry));
    }
    if (replaced.layer) AddClassFolders(*replaced.layer, scope, name, policy, found);
    std::stable_sort(found.begin(), found.end(),
                     [](const auto& left, const auto& right) { return left.first < right.first; });
    std::vector<EntryPtr> entries;
    entries.reserve(found.size());
    for (auto& [main, entry] : found) entries.push_back(std::move(entry));
    return entries;
  }

  static void AddClassFolders(const PathLayer& layer, SearchScope scope, const std::u16string& name,
                              FilenameMatchingPolicy policy, std::vector<std::pair<std::size_t, EntryPtr>>& found) {
    const auto& slots = layer.GetSlots();
    for (const Ordinal ordinal : layer.ClassFoldersOf(name, policy)) {
      if (!scope.Contains(slots[slots[ordinal].parent].kind)) continue;
      found.emplace_back(slots[ordinal].position, slots[ordinal].entry);
    }
  }

  // The place of the main entry that an entry of this path belongs to.
  [[nodiscard]] std::optional<std::size_t> PlaceOf(const IPathEntry& entry) const {
    if (const auto ordinal = Records().OrdinalOf(entry)) {
      const std::size_t main = Records().MainOf(*ordinal);
      return IsAlive(main) ? std::optional(main) : std::nullopt;
    }
    if (!replaced.layer) return std::nullopt;
    const auto ordinal = replaced.layer->GetTable().Find(entry);
    if (!ordinal) return std::nullopt;
    return replaced.layer->GetSlots()[*ordinal].position;
  }
};

CachedPath::CachedPath(std::unique_ptr<const State> state) noexcept : state_(std::move(state)) {}

CachedPath::~CachedPath() = default;

std::shared_ptr<const CachedPath> CachedPath::Make(const ToolboxCache& cache, std::size_t count, ReadAnew readAnew) {
  const CacheRecords& records = cache.GetRecords();
  if (records.GetImage().GetHeader().hasList == 0) return nullptr;
  count = std::min(count, records.CountOfMains());
  auto unproven =
      cache.GetTrust() == CacheTrust::Blind ? std::optional(std::vector<Position>()) : Unproven(records, count);
  if (!unproven) return nullptr;
  return std::shared_ptr<const CachedPath>(
      new CachedPath(std::make_unique<const State>(cache, count, std::move(readAnew), *std::move(unproven))));
}

std::size_t CachedPath::CountDeciding(const ToolboxCache& cache, const SearchTarget& target) {
  const CacheRecords& records = cache.GetRecords();
  if (PathManagement::IsPartialPathname(target.GetBaseName())) return records.CountOfMains();
  for (const std::uint32_t ordinal : CandidatesFor(records.GetImage(), target)) {
    if (records.RowOf(ordinal).parent == kNone) return records.MainOf(ordinal) + 1;
  }
  return records.CountOfMains();
}

std::shared_ptr<const FolderPath> CachedPath::GetWhole() const { return state_->Whole(); }

bool CachedPath::IsWhole() const noexcept { return state_->count == state_->Records().CountOfMains(); }

std::size_t CachedPath::CountRead() const noexcept { return state_->read.size(); }

std::vector<PathProblem> CachedPath::GetProblems() const {
  return state_->Answer([this] { return state_->QuickProblems(); },
                        [](const FolderPath& whole) { return whole.GetProblems(); });
}

std::shared_ptr<const std::vector<EntryPtr>> CachedPath::GetMainEntries() const {
  return state_->Whole()->GetMainEntries();
}

std::vector<EntryPtr> CachedPath::GetMethodEntries() const { return state_->Whole()->GetMethodEntries(); }

std::vector<EntryPtr> CachedPath::GetMethodEntriesByName(SearchScope scope, const std::u16string& name,
                                                         FilenameMatchingPolicy policy) const {
  const auto wholly = [&](const FolderPath& whole) { return whole.GetMethodEntriesByName(scope, name, policy); };
  if (name.empty()) return {};
  if (!state_->IsExact(policy)) return wholly(*state_->Whole());
  return state_->Answer([&] { return state_->ClassFolders(scope, name, policy); }, wholly);
}

std::vector<EntryPtr> CachedPath::GetPartiallyMatchingEntries(SearchScope scope, const std::u16string& partialPathname,
                                                              FilenameMatchingPolicy policy) const {
  return state_->Whole()->GetPartiallyMatchingEntries(scope, partialPathname, policy);
}

EntryPtr CachedPath::GetMainEntryForEntry(const IPathEntry& entry) const {
  return state_->Whole()->GetMainEntryForEntry(entry);
}

EntryPtr CachedPath::GetParentEntryForEntry(const IPathEntry& entry) const {
  return state_->Whole()->GetParentEntryForEntry(entry);
}

EntryPtr CachedPath::GetPathEntryFromAbsoluteIRI(const AbsoluteIRI& location, FilenameMatchingPolicy policy) const {
  return state_->Whole()->GetPathEntryFromAbsoluteIRI(location, policy);
}

EntryPtr CachedPath::GetPathEntryFromAbsoluteIRI(const CanonicalAbsoluteIRI& location) const {
  return state_->Whole()->GetPathEntryFromAbsoluteIRI(location);
}

boost::optional<FoundItem> CachedPath::FindFirstInScope(SearchScope scope, const SearchTarget& target,
                                                        FilenameMatchingPolicy policy) const {
  const auto wholly = [&](const FolderPath& whole) { return whole.FindFirstInScope(scope, target, policy); };
  const bool isPlain = !PathManagement::IsPartialPathname(target.GetBaseName());
  if (!isPlain || !state_->IsExact(policy)) return wholly(*state_->Whole());
  return state_->Answer([&] { return state_->FindFirst(scope, target, policy); }, wholly);
}

std::vector<FoundItem> CachedPath::FindAllInScope(SearchScope scope, const SearchTarget& target,
                                                  FilenameMatchingPolicy policy) const {
  return state_->Whole()->FindAllInScope(scope, target, policy);
}

bool CachedPath::ForEachEntry(SearchScope scope, const PathEntryCallback& callback) const {
  return state_->Whole()->ForEachEntry(scope, callback);
}

bool CachedPath::ConcurrentForEachEntry(SearchScope scope, const PathEntryCallback& callback) const {
  return state_->Whole()->ConcurrentForEachEntry(scope, callback);
}

bool CachedPath::FirstEntryIsBeforeSecondOnPath(const IPathEntry& first, const IPathEntry& second) const {
  const auto quickly = [&] {
    const auto placeOfFirst = state_->PlaceOf(first);
    const auto placeOfSecond = state_->PlaceOf(second);
    if (!placeOfFirst || !placeOfSecond) return placeOfFirst.has_value() && !placeOfSecond.has_value();
    return *placeOfFirst < *placeOfSecond;
  };
  return state_->Answer(quickly,
                        [&](const FolderPath& whole) { return whole.FirstEntryIsBeforeSecondOnPath(first, second); });
}

bool CachedPath::IsEntryOnPath(const IPathEntry& entry) const {
  return state_->Answer([&] { return state_->PlaceOf(entry).has_value(); },
                        [&](const FolderPath& whole) { return whole.IsEntryOnPath(entry); });
}

}  // namespace Quorvex::PathEnvironment
