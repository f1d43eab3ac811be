// The leaf path. Every lookup goes the same way: the index gives the entries that can hold the name, in path order, and
// the entries themselves decide.

#include <algorithm>
#include <fl/filesystem/path.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <search_path_environment/folder_path.hpp>
#include <search_path_interfaces/constants.hpp>
#include <search_path_utilities/lookup.hpp>
#include <utility>

#include "lazy.hpp"
#include "location_table.hpp"
#include "name_index.hpp"

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

std::vector<std::shared_ptr<const FolderEntry>> EntriesOf(const std::vector<FolderPath::Folder>& folders) {
  std::vector<std::shared_ptr<const FolderEntry>> entries;
  entries.reserve(folders.size());
  for (const auto& folder : folders) entries.push_back(folder.entry);
  return entries;
}

void CollectProblems(const FolderEntry& entry, std::size_t position, std::vector<PathProblem>& problems) {
  for (PathProblem problem : entry.GetProblems()) {
    problem.position = position;
    problems.push_back(std::move(problem));
  }
  for (const auto& child : entry.GetChildren()) CollectProblems(*child, position, problems);
}

std::vector<PathProblem> AllProblemsOf(const std::vector<FolderPath::Folder>& folders,
                                       std::vector<PathProblem> problems) {
  for (const auto& folder : folders) CollectProblems(*folder.entry, folder.position, problems);
  std::stable_sort(problems.begin(), problems.end(),
                   [](const PathProblem& left, const PathProblem& right) { return left.position < right.position; });
  return problems;
}

// Which folders a partial pathname names. A text that begins with a separator is a whole path.
class FolderMatcher {
 public:
  FolderMatcher(const std::u16string& folders, FilenameMatchingPolicy policy) : policy_(policy) {
    const bool isWholePath = !folders.empty() && IsSeparator(folders.front());
    if (isWholePath) {
      wholePath_ = fl::filesystem::detail::make_native_form(folders, true);
    } else {
      components_ = SplitIntoComponents(folders);
    }
  }

  bool Matches(const std::shared_ptr<const FolderEntry>& entry) const {
    if (wholePath_.empty()) return MatchesComponents(entry);
    return (*entry->GetFilenameComparator(policy_))(wholePath_, entry->GetAbsoluteIRI().getPath());
  }

 private:
  bool MatchesComponents(const std::shared_ptr<const FolderEntry>& entry) const {
    try {
      return PathManagement::DoesPartialPathnameMatchPathEntryIRI(components_, entry, policy_);
    } catch (const foundation::storage::vfs::Exception&) {
      // A location that is no path of its storage, such as file://host/x: it cannot be read, and no pathname names it.
      return false;
    }
  }

  static bool IsSeparator(char16_t unit) {
    return PathManagement::Constants::PathnameSeparatorStr.find(unit) != std::u16string::npos;
  }

  static std::vector<std::u16string> SplitIntoComponents(const std::u16string& text) {
    std::vector<std::u16string> components;
    for (auto begin = text.begin(); begin != text.end();) {
      const auto end = std::find_if(begin, text.end(), IsSeparator);
      if (begin != end) components.emplace_back(begin, end);
      begin = std::find_if_not(end, text.end(), IsSeparator);
    }
    return components;
  }

  FilenameMatchingPolicy policy_;
  std::u16string wholePath_;
  std::vector<std::u16string> components_;
};

// The base name under which the index holds the file called `name` followed by `extension`, which may be cut elsewhere.
std::u16string KeyFor(const std::u16string& name, const std::u16string& extension) {
  std::u16string fullName = name + extension;
  fullName.resize(fullName.size() - fl::filesystem::detail::extract_extension(fullName).size());
  return fullName;
}

// Whether the name is cut where the caller cut it.
bool IsCutHere(const std::u16string& name, const std::u16string& extension) {
  if (extension.empty()) return name.find(u'.', 1) == std::u16string::npos;
  return extension.rfind(u'.') == 0;
}

std::vector<std::u16string> KeysFor(const SearchTarget& target) {
  std::vector<std::u16string> keys;
  for (const std::u16string& extension : target.GetExtensions()) {
    keys.push_back(KeyFor(target.GetBaseName(), extension));
  }
  std::sort(keys.begin(), keys.end());
  keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
  return keys;
}

}  // namespace

struct FolderPath::State {
  State(const std::vector<Folder>& folders, std::vector<PathProblem> listProblems)
      : table(EntriesOf(folders)),
        exactIndex(table.GetSlots(), NameIndex::Keys::Exact),
        problems(AllProblemsOf(folders, std::move(listProblems))) {
    auto main = std::make_shared<std::vector<EntryPtr>>();
    main->reserve(folders.size());
    for (const auto& folder : folders) main->push_back(folder.entry);
    mainEntries = std::move(main);
    comparesExactlyEverywhere = std::all_of(table.GetSlots().begin(), table.GetSlots().end(), [](const auto& slot) {
      return slot.entry->ComparesExactly(FilenameMatchingPolicy::Native);
    });
  }

  const NameIndex& IndexFor(FilenameMatchingPolicy policy) const {
    if (policy == FilenameMatchingPolicy::CaseSensitive) return exactIndex;
    if (policy != FilenameMatchingPolicy::CaseInsensitive && comparesExactlyEverywhere) return exactIndex;
    return foldedIndex.Get([this] { return NameIndex(table.GetSlots(), NameIndex::Keys::Folded); });
  }

  const std::shared_ptr<const FolderEntry>& EntryAt(Ordinal ordinal) const { return table.GetSlots()[ordinal].entry; }

  EntryPtr EntryOrNull(std::optional<Ordinal> ordinal) const { return ordinal ? EntryAt(*ordinal) : nullptr; }

  // Visits the entries in `scope` that can hold what `target`, a plain name, matches, in path order, until `visit`
  // returns true.
  template <class Visit>
  void ForEachCandidate(SearchScope scope, const SearchTarget& target, FilenameMatchingPolicy policy,
                        const Visit& visit) const {
    const std::u16string& name = target.GetBaseName();
    if (name.empty()) return;

    const NameIndex& index = IndexFor(policy);
    const auto visitInScope = [&](Ordinal ordinal) {
      const auto& entry = EntryAt(ordinal);
      return scope.Contains(entry->GetEntryType()) && visit(entry);
    };
    const auto& extensions = target.GetExtensions();
    if (std::all_of(extensions.begin(), extensions.end(), [&](const auto& e) { return IsCutHere(name, e); })) {
      index.ForEachHolderOf(name, visitInScope);
    } else {
      const std::vector<Ordinal> holders = HoldersOfAny(KeysFor(target), index);
      static_cast<void>(std::any_of(holders.begin(), holders.end(), visitInScope));
    }
  }

  static std::vector<Ordinal> HoldersOfAny(const std::vector<std::u16string>& keys, const NameIndex& index) {
    std::vector<Ordinal> holders;
    for (const std::u16string& key : keys) {
      index.ForEachHolderOf(key, [&](Ordinal ordinal) {
        holders.push_back(ordinal);
        return false;
      });
    }
    std::sort(holders.begin(), holders.end());
    holders.erase(std::unique(holders.begin(), holders.end()), holders.end());
    return holders;
  }

  // Calls `search(plainTarget, isWanted)`, where `isWanted` tells whether an entry's folder is the one that the target
  // names.
  template <class Search>
  static auto WithPlainName(const SearchTarget& target, FilenameMatchingPolicy policy, const Search& search) {
    const std::u16string& name = target.GetBaseName();
    const std::size_t separator = name.find_last_of(PathManagement::Constants::PathnameSeparatorStr);
    if (separator == std::u16string::npos) return search(target, [](const auto&) { return true; });

    const FolderMatcher folders(name.substr(0, separator + 1), policy);
    const std::u16string plainName = name.substr(separator + 1);
    return search(SearchTarget(plainName, target.GetExtensions()),
                  [&folders](const std::shared_ptr<const FolderEntry>& entry) { return folders.Matches(entry); });
  }

  LocationTable table;
  NameIndex exactIndex;
  Lazy<NameIndex> foldedIndex;
  bool comparesExactlyEverywhere = true;
  std::shared_ptr<const std::vector<EntryPtr>> mainEntries;
  std::vector<PathProblem> problems;
};

FolderPath::FolderPath(const std::vector<Folder>& folders, std::vector<PathProblem> problems)
    : state_(std::make_unique<const State>(folders, std::move(problems))) {}

FolderPath::~FolderPath() = default;

std::shared_ptr<const std::vector<EntryPtr>> FolderPath::GetMainEntries() const { return state_->mainEntries; }

std::vector<EntryPtr> FolderPath::GetMethodEntries() const {
  std::vector<EntryPtr> entries;
  for (const auto& slot : state_->table.GetSlots()) {
    if (slot.parent != kNoOrdinal) entries.push_back(slot.entry);
  }
  return entries;
}

std::vector<EntryPtr> FolderPath::GetMethodEntriesByName(SearchScope scope, const std::u16string& name,
                                                         FilenameMatchingPolicy policy) const {
  std::vector<EntryPtr> entries;
  if (name.empty()) return entries;

  state_->IndexFor(policy).ForEachClassFolder(name, [&](Ordinal ordinal) {
    const FolderEntry& parent = *state_->EntryAt(state_->table.GetSlots()[ordinal].parent);
    if (!scope.Contains(parent.GetEntryType())) return;

    const std::u16string folderName = state_->EntryAt(ordinal)->GetAbsoluteIRI().getName();
    const bool matches = (*parent.GetFilenameComparator(policy))(name, folderName.substr(1));
    if (matches) entries.push_back(state_->EntryAt(ordinal));
  });
  return entries;
}

std::vector<EntryPtr> FolderPath::GetPartiallyMatchingEntries(SearchScope scope, const std::u16string& partialPathname,
                                                              FilenameMatchingPolicy policy) const {
  const FolderMatcher folders(partialPathname, policy);
  std::vector<EntryPtr> entries;
  for (const auto& slot : state_->table.GetSlots()) {
    if (scope.Contains(slot.entry->GetEntryType()) && folders.Matches(slot.entry)) entries.push_back(slot.entry);
  }
  return entries;
}

EntryPtr FolderPath::GetMainEntryForEntry(const IPathEntry& entry) const {
  const auto ordinal = state_->table.Find(entry);
  if (!ordinal) return nullptr;
  return state_->EntryAt(state_->table.GetSlots()[*ordinal].main);
}

EntryPtr FolderPath::GetParentEntryForEntry(const IPathEntry& entry) const {
  const auto ordinal = state_->table.Find(entry);
  if (!ordinal) return nullptr;
  const Ordinal parent = state_->table.GetSlots()[*ordinal].parent;
  return parent == kNoOrdinal ? nullptr : state_->EntryAt(parent);
}

EntryPtr FolderPath::GetPathEntryFromAbsoluteIRI(const AbsoluteIRI& location, FilenameMatchingPolicy policy) const {
  if (const auto exact = state_->table.FindLocation(location)) return state_->EntryAt(*exact);
  return state_->EntryOrNull(state_->table.FindLocationUnder(policy, location));
}

EntryPtr FolderPath::GetPathEntryFromAbsoluteIRI(const CanonicalAbsoluteIRI& location) const {
  return state_->EntryOrNull(state_->table.FindLocation(location.getAbsoluteIRI()));
}

boost::optional<FoundItem> FolderPath::FindFirstInScope(SearchScope scope, const SearchTarget& target,
                                                        FilenameMatchingPolicy policy) const {
  return State::WithPlainName(target, policy, [&](const SearchTarget& plain, const auto& isWanted) {
    boost::optional<FoundItem> found;
    state_->ForEachCandidate(scope, plain, policy, [&](const std::shared_ptr<const FolderEntry>& entry) {
      auto item = entry->FindFirst(plain, policy);
      if (item && isWanted(entry)) found.emplace(std::move(item), entry);
      return found.has_value();
    });
    return found;
  });
}

std::vector<FoundItem> FolderPath::FindAllInScope(SearchScope scope, const SearchTarget& target,
                                                  FilenameMatchingPolicy policy) const {
  return State::WithPlainName(target, policy, [&](const SearchTarget& plain, const auto& isWanted) {
    std::vector<FoundItem> found;
    state_->ForEachCandidate(scope, plain, policy, [&](const std::shared_ptr<const FolderEntry>& entry) {
      const auto items = entry->FindAll(plain, policy);
      if (!items.empty() && isWanted(entry)) {
        for (const auto& item : items) found.emplace_back(item, entry);
      }
      return false;
    });
    return found;
  });
}

bool FolderPath::ForEachEntry(SearchScope scope, const PathEntryCallback& callback) const {
  const auto& main = *state_->mainEntries;
  return std::any_of(main.begin(), main.end(),
                     [&](const EntryPtr& entry) { return entry->ForEachEntryInScope(scope, callback); });
}

bool FolderPath::ConcurrentForEachEntry(SearchScope scope, const PathEntryCallback& callback) const {
  // Everything is in memory: a thread would cost more than the walk.
  return ForEachEntry(scope, callback);
}

bool FolderPath::FirstEntryIsBeforeSecondOnPath(const IPathEntry& first, const IPathEntry& second) const {
  const auto ordinalOfFirst = state_->table.Find(first);
  const auto ordinalOfSecond = state_->table.Find(second);
  if (!ordinalOfFirst || !ordinalOfSecond) return ordinalOfFirst.has_value() && !ordinalOfSecond.has_value();

  const auto& slots = state_->table.GetSlots();
  return slots[*ordinalOfFirst].main < slots[*ordinalOfSecond].main;
}

bool FolderPath::IsEntryOnPath(const IPathEntry& entry) const { return state_->table.Find(entry).has_value(); }

const std::vector<PathProblem>& FolderPath::GetProblems() const noexcept { return state_->problems; }

}  // namespace Quorvex::PathEnvironment
