// A snapshot of one folder. Names are packed; the objects that callers see are made when they ask.

#include <algorithm>
#include <fl/filesystem/case_folding.hpp>
#include <mutex>
#include <search_path_environment/folder_entry.hpp>
#include <utility>

#include "folder_names.hpp"

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;
using PathManagement::FilenameComparator;
using PathManagement::FilenameMatchingPolicy;
using PathManagement::PathEntryCallback;
using PathManagement::PathEntryType;
using PathManagement::PathItem;
using PathManagement::SearchScope;
using PathManagement::detail::SearchTarget;

namespace {

using FolderEntryPtr = std::shared_ptr<const FolderEntry>;

FolderEntry::EntryGroup GroupOf(const std::vector<FolderEntryPtr>& entries) {
  static const auto none = std::make_shared<const std::vector<FolderEntry::EntryPtr>>();
  if (entries.empty()) return none;
  return std::make_shared<const std::vector<FolderEntry::EntryPtr>>(entries.begin(), entries.end());
}

std::vector<FolderEntryPtr> InWalkOrder(const SpecialSubfolders& subfolders) {
  std::vector<FolderEntryPtr> children;
  if (subfolders.privateEntry) children.push_back(subfolders.privateEntry);
  if (subfolders.resources) children.push_back(subfolders.resources);
  children.insert(children.end(), subfolders.classes.begin(), subfolders.classes.end());
  children.insert(children.end(), subfolders.packages.begin(), subfolders.packages.end());
  children.shrink_to_fit();
  return children;
}

PathItem ItemAt(const FolderNames& names, std::size_t index, const AbsoluteIRI& folder) {
  const FolderNames::View& view = names.GetView();
  return {view.BaseName(index).ToString(), view.Extension(index).ToString(), folder};
}

}  // namespace

struct FolderEntry::State {
  // `files` is what a table of names is made of.
  template <class Files>
  State(Contents contents, Files&& files)
      : canonicalLocation(contents.canonicalLocation),
        kind(contents.kind),
        comparesNamesExactly(contents.comparesNamesExactly),
        names(std::forward<Files>(files)),
        children(InWalkOrder(contents.subfolders)),
        classes(GroupOf(contents.subfolders.classes)),
        packages(GroupOf(contents.subfolders.packages)),
        privateEntry(std::move(contents.subfolders.privateEntry)),
        resources(std::move(contents.subfolders.resources)),
        problems(std::move(contents.problems)),
        proof(std::make_shared<const FolderProof>(std::move(contents.proof))) {}

  AbsoluteIRI canonicalLocation;
  PathEntryType kind;
  bool comparesNamesExactly;
  FolderNames names;
  std::vector<FolderEntryPtr> children;
  EntryGroup classes;
  EntryGroup packages;
  EntryPtr privateEntry;
  EntryPtr resources;
  std::vector<PathProblem> problems;

  mutable std::mutex mutex;  // of what follows
  mutable std::weak_ptr<const Items> items;
  mutable std::shared_ptr<const FolderProof> proof;
};

FolderEntry::FolderEntry(CreationKey /*key*/, const AbsoluteIRI& location, std::unique_ptr<const State> state) noexcept
    : location_(location), state_(std::move(state)) {}

FolderEntry::~FolderEntry() = default;

std::shared_ptr<const FolderEntry> FolderEntry::Create(Contents contents) {
  const AbsoluteIRI location = contents.location;
  std::vector<std::u16string> files = std::move(contents.files);
  return std::make_shared<const FolderEntry>(CreationKey(), location,
                                             std::make_unique<const State>(std::move(contents), std::move(files)));
}

std::shared_ptr<const FolderEntry> FolderEntry::Create(Contents contents, const PackedNames& packed) {
  const AbsoluteIRI location = contents.location;
  return std::make_shared<const FolderEntry>(CreationKey(), location,
                                             std::make_unique<const State>(std::move(contents), packed));
}

PathEntryType FolderEntry::GetEntryType() const { return state_->kind; }
AbsoluteIRI FolderEntry::GetAbsoluteIRI() const { return location_; }
FolderEntry::EntryPtr FolderEntry::GetPrivateEntry() const { return state_->privateEntry; }
FolderEntry::EntryPtr FolderEntry::GetSecondSingleEntry() const { return state_->resources; }
FolderEntry::EntryGroup FolderEntry::GetFirstEntryGroup() const { return state_->classes; }
FolderEntry::EntryGroup FolderEntry::GetSecondEntryGroup() const { return state_->packages; }
FolderEntry::EntryGroup FolderEntry::GetThirdEntryGroup() const { return GroupOf({}); }
const AbsoluteIRI& FolderEntry::GetCanonicalLocation() const noexcept { return state_->canonicalLocation; }
const std::vector<PathProblem>& FolderEntry::GetProblems() const noexcept { return state_->problems; }
const std::vector<FolderEntryPtr>& FolderEntry::GetChildren() const noexcept { return state_->children; }
const FolderNames& FolderEntry::GetNames() const noexcept { return state_->names; }

std::shared_ptr<const FolderEntry::Items> FolderEntry::GetItems() const {
  const std::scoped_lock lock(state_->mutex);
  if (auto alive = state_->items.lock()) return alive;

  // One block holds all items; the pointers into it share its count, so that an item kept by a caller keeps the block.
  const auto block = std::make_shared<std::vector<PathItem>>();
  block->reserve(state_->names.size());
  for (std::size_t index = 0; index < state_->names.size(); ++index) {
    block->push_back(ItemAt(state_->names, index, location_));
  }

  auto items = std::make_shared<Items>();
  items->reserve(block->size());
  for (const PathItem& item : *block) items->emplace_back(block, &item);
  state_->items = items;
  return items;
}

void FolderEntry::ForEachName(const std::function<void(std::u16string_view, std::u16string_view)>& visit) const {
  const FolderNames::View& view = state_->names.GetView();
  std::u16string fullName;
  for (std::size_t index = 0; index < view.size(); ++index) {
    view.FullName(index).CopyTo(fullName);
    const std::u16string_view text = fullName;
    const std::size_t baseLength = view.BaseName(index).size();
    visit(text.substr(0, baseLength), text.substr(baseLength));
  }
}

std::shared_ptr<const PathItem> FolderEntry::FindFirst(const SearchTarget& target,
                                                       FilenameMatchingPolicy policy) const {
  const std::u16string& baseName = target.GetBaseName();
  if (baseName.empty()) return nullptr;

  const auto make = [this](std::size_t index) {
    return std::make_shared<const PathItem>(ItemAt(state_->names, index, location_));
  };
  for (const std::u16string& extension : target.GetExtensions()) {
    // An exact match wins over others under every policy.
    if (const auto exact = state_->names.Find(baseName, extension)) return make(*exact);
    if (ComparesExactly(policy)) continue;
    const auto matches = state_->names.FindIgnoringCase(baseName, extension);
    if (!matches.empty()) return make(matches.front());
  }
  return nullptr;
}

FolderEntry::Items FolderEntry::FindAll(const SearchTarget& target, FilenameMatchingPolicy policy) const {
  const std::u16string& baseName = target.GetBaseName();
  if (baseName.empty()) return {};

  std::vector<std::size_t> found;
  const auto add = [&found](std::size_t index) {
    if (std::find(found.begin(), found.end(), index) == found.end()) found.push_back(index);
  };
  for (const std::u16string& extension : target.GetExtensions()) {
    if (!ComparesExactly(policy)) {
      for (const std::size_t match : state_->names.FindIgnoringCase(baseName, extension)) add(match);
    } else if (const auto exact = state_->names.Find(baseName, extension)) {
      add(*exact);
    }
  }

  Items items;
  items.reserve(found.size());
  for (const std::size_t index : found) {
    items.push_back(std::make_shared<const PathItem>(ItemAt(state_->names, index, location_)));
  }
  return items;
}

bool FolderEntry::ForEachEntryInScope(SearchScope scope, const PathEntryCallback& callback) const {
  if (scope.Contains(state_->kind) && callback(shared_from_this())) return true;
  return std::any_of(state_->children.begin(), state_->children.end(),
                     [&](const FolderEntryPtr& child) { return child->ForEachEntryInScope(scope, callback); });
}

std::shared_ptr<const FilenameComparator> FolderEntry::GetFilenameComparator(FilenameMatchingPolicy policy) const {
  static const auto exact = std::make_shared<const FilenameComparator>(
      [](const std::u16string& wanted, const std::u16string& name) { return wanted == name; });
  static const auto ignoringCase =
      std::make_shared<const FilenameComparator>([](const std::u16string& wanted, const std::u16string& name) {
        return fl::filesystem::fold_case(wanted) == fl::filesystem::fold_case(name);
      });
  return ComparesExactly(policy) ? exact : ignoringCase;
}

// Depth is bounded by the reader, so recursion is too.
bool FolderEntry::HoldsTheSameAs(const FolderEntry& other) const {
  if (this == &other) return true;
  const State& mine = *state_;
  const State& theirs = *other.state_;
  return location_ == other.location_ && mine.canonicalLocation == theirs.canonicalLocation &&
         mine.kind == theirs.kind && mine.comparesNamesExactly == theirs.comparesNamesExactly &&
         mine.problems == theirs.problems && mine.names.HoldsTheSameAs(theirs.names) &&
         std::equal(
             mine.children.begin(), mine.children.end(), theirs.children.begin(), theirs.children.end(),
             [](const FolderEntryPtr& left, const FolderEntryPtr& right) { return left->HoldsTheSameAs(*right); });
}

std::shared_ptr<const FolderProof> FolderEntry::GetProof() const {
  const std::scoped_lock lock(state_->mutex);
  return state_->proof;
}

void FolderEntry::RenewProofs(const FolderEntry& later) const {
  if (this == &later) return;
  auto proof = later.GetProof();
  {
    const std::scoped_lock lock(state_->mutex);
    state_->proof = std::move(proof);
  }
  for (std::size_t i = 0; i < state_->children.size(); ++i) {
    state_->children[i]->RenewProofs(*later.state_->children[i]);
  }
}

bool FolderEntry::ComparesExactly(FilenameMatchingPolicy policy) const noexcept {
  if (policy == FilenameMatchingPolicy::CaseSensitive) return true;
  if (policy == FilenameMatchingPolicy::CaseInsensitive) return false;
  return state_->comparesNamesExactly;
}

}  // namespace Quorvex::PathEnvironment
