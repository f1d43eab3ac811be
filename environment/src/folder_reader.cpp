// Reads a folder and, in depth, the special subfolders that belong to it. What a kind of folder may hold decides what
// is read: a plain subfolder costs nothing.

#include "folder_reader.hpp"

#include <algorithm>
#include <foundation/storage/vfs/exception.hpp>
#include <foundation/storage/vfs/storage_provider.hpp>
#include <optional>
#include <search_path_utilities/lookup.hpp>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "former_entries.hpp"
#include "special_subfolders.hpp"

namespace Quorvex::PathEnvironment {

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::FileIdentity;
using foundation::storage::vfs::FileKind;
using foundation::storage::vfs::FolderListing;
using foundation::storage::vfs::IStorageProvider;
using foundation::storage::vfs::ListedEntry;
using foundation::storage::vfs::ListingProblem;
using foundation::storage::vfs::StorageSystemReference;
using PathManagement::PathEntryType;
using FolderEntryPtr = std::shared_ptr<const FolderEntry>;
using StorageException = foundation::storage::vfs::Exception;

ProblemKind KindOf(const std::error_code& error) {
  if (error == std::errc::no_such_file_or_directory) return ProblemKind::Missing;
  if (error == std::errc::not_a_directory) return ProblemKind::NotAFolder;
  return ProblemKind::Unreadable;
}

std::vector<LinkedEntry> LinkedEntriesOf(const FolderListing& listing) {
  std::vector<LinkedEntry> links;
  if (listing.links.empty()) return links;
  std::unordered_map<std::u16string_view, FileKind> kinds;
  for (const ListedEntry& entry : listing.entries) kinds.emplace(entry.name, entry.kind);
  for (const std::u16string& name : listing.links) {
    if (const auto kind = kinds.find(name); kind != kinds.end()) links.push_back({name, kind->second});
  }
  std::sort(links.begin(), links.end(),
            [](const LinkedEntry& left, const LinkedEntry& right) { return left.name < right.name; });
  return links;
}

bool IsByLocation(const PathProblem& left, const PathProblem& right) { return left.location < right.location; }

class Reader {
 public:
  explicit Reader(const IStorageProvider& provider) : provider_(provider) {}
  // Of the entries that a folder had before, reads those in doubt alone.
  Reader(const IStorageProvider& provider, const EntriesInDoubt& doubt) : provider_(provider), doubt_(&doubt) {}

  // What became of `former`. Null as in Read.
  FolderEntryPtr ReadAgain(const FolderEntryPtr& former) {
    if (!doubt_->IsInOrBelow(*former)) return former;
    auto entry = doubt_->Is(*former) ? Read(former->GetLocation(), former->GetEntryType(), former.get())
                                     : ReadAgainBelow(former);
    return entry ? FormerIfEqual(former, entry) : nullptr;
  }

  // Null for a folder that already stands on its own branch.
  FolderEntryPtr Read(const AbsoluteIRI& location, PathEntryType kind, const FolderEntry* previous) {
    FolderEntry::Contents contents{location, location, kind, true, {}, {}, {}};
    KeepingProblems(contents, [&] { contents.canonicalLocation = provider_.CanonicalLocation(location); });

    bool isLoop = false;
    if (branch_.size() > kMaximumDepth) {
      contents.problems.push_back({location, ProblemKind::TooDeep, {}});
    } else {
      KeepingProblems(contents, [&] { isLoop = !ReadInto(contents, previous); });
    }
    if (isLoop) return nullptr;
    return Finished(std::move(contents));
  }

 private:
  FolderEntryPtr Finished(FolderEntry::Contents contents) const {
    Conclude(contents);
    SortByName(contents.subfolders);
    // Storage lists in no order; people and programs want the same report each time.
    std::stable_sort(contents.problems.begin(), contents.problems.end(), IsByLocation);
    return FolderEntry::Create(std::move(contents));
  }

  // The folder itself is as it was; something below it may not be.
  FolderEntryPtr ReadAgainBelow(const FolderEntryPtr& former) {
    FolderEntry::Contents contents = ContentsOf(*former);
    std::optional<FileIdentity> identity;
    KeepingProblems(contents, [&] { identity = provider_.Stat(former->GetLocation()).identity; });
    // So it is not as it was, whatever was said.
    if (identity != contents.proof.stamp.identity)
      return Read(former->GetLocation(), former->GetEntryType(), former.get());

    const BranchStep step(branch_, *identity);
    for (const FolderEntryPtr& child : former->GetChildren()) {
      PlaceOrReport(ReadAgain(child), child->GetLocation(), contents);
    }
    return Finished(std::move(contents));
  }

  // All but the subfolders.
  static FolderEntry::Contents ContentsOf(const FolderEntry& entry) {
    FolderEntry::Contents contents{entry.GetLocation(),
                                   entry.GetCanonicalLocation(),
                                   entry.GetEntryType(),
                                   entry.ComparesExactly(PathManagement::FilenameMatchingPolicy::Native),
                                   {},
                                   {},
                                   entry.GetProblems(),
                                   *entry.GetProof()};
    contents.proof.finding = FolderProof::Finding::Trouble;  // until it is concluded
    entry.ForEachName([&contents](std::u16string_view baseName, std::u16string_view extension) {
      contents.files.push_back(std::u16string(baseName).append(extension));
    });
    return contents;
  }

  // An entry may be kept unread as long as the folder around it is the same one.
  [[nodiscard]] static bool MayKeepBelow(const FolderEntry::Contents& contents, const FolderEntry* previous) {
    return previous != nullptr && previous->GetCanonicalLocation() == contents.canonicalLocation &&
           previous->GetProof()->stamp.identity == contents.proof.stamp.identity;
  }

  // Stands on the branch of every folder read meanwhile.
  class BranchStep {
   public:
    BranchStep(std::vector<FileIdentity>& branch, const FileIdentity& folder) : branch_(branch) {
      branch_.push_back(folder);
    }
    BranchStep(const BranchStep&) = delete;
    BranchStep& operator=(const BranchStep&) = delete;
    ~BranchStep() { branch_.pop_back(); }

   private:
    std::vector<FileIdentity>& branch_;
  };

  // What storage refuses in `step` becomes a problem of the folder. Two steps that fail alike have met one problem.
  template <class Step>
  static void KeepingProblems(FolderEntry::Contents& contents, const Step& step) {
    try {
      step();
    } catch (const StorageException& exception) {
      const std::error_code error = exception.GetError();
      const bool isKnown = std::any_of(
          contents.problems.begin(), contents.problems.end(),
          [&](const PathProblem& problem) { return problem.location == contents.location && problem.error == error; });
      if (!isKnown) contents.problems.push_back({contents.location, KindOf(error), error});
    }
  }

  // What the proof is worth: only a reading without trouble, or nothing where there is none, can be proven later.
  void Conclude(FolderEntry::Contents& contents) const {
    FolderProof& proof = contents.proof;
    const auto& problems = contents.problems;
    if (problems.empty()) {
      proof.finding = FolderProof::Finding::Folder;
    } else if (problems.size() == 1 && problems[0].kind == ProblemKind::Missing &&
               problems[0].location == contents.location) {
      proof.finding = FolderProof::Finding::Missing;
    } else if (proof.stamp == FolderStamp()) {
      proof.stamp.identity = IdentityIfKnown(contents.location);
    }
  }

  FileIdentity IdentityIfKnown(const AbsoluteIRI& location) const {
    try {
      return provider_.Stat(location).identity;
    } catch (const StorageException&) {
      return {};  // why it cannot be read is known already
    }
  }

  bool ReadInto(FolderEntry::Contents& contents, const FolderEntry* previous) {
    FolderListing listing = provider_.List(contents.location);
    if (std::find(branch_.begin(), branch_.end(), listing.identity) != branch_.end()) return false;

    contents.proof.stamp = {listing.identity, listing.modificationTime, listing.changeTime};
    contents.proof.readAt = listing.readAt;
    contents.proof.links = LinkedEntriesOf(listing);
    KeepingProblems(contents,
                    [&] { contents.comparesNamesExactly = provider_.ComparesNamesExactly(contents.location); });
    for (const ListingProblem& problem : listing.problems) {
      KeepingProblems(contents, [&] {
        contents.problems.push_back({contents.location.getChild(problem.name), ProblemKind::Unreadable, problem.error});
      });
    }
    ReadEntries(std::move(listing), contents, previous);
    return true;
  }

  void ReadEntries(FolderListing&& listing, FolderEntry::Contents& contents, const FolderEntry* previous) {
    const BranchStep step(branch_, listing.identity);
    const FormerEntries former = FormerEntries::Below(previous);
    const bool mayKeep = doubt_ != nullptr && MayKeepBelow(contents, previous);
    contents.files.reserve(listing.entries.size());
    for (auto& entry : listing.entries) {
      if (entry.kind == FileKind::File) contents.files.push_back(std::move(entry.name));
      if (entry.kind == FileKind::Folder) {
        KeepingProblems(contents, [&] { ReadSubfolder(contents, entry.name, former, mayKeep); });
      }
    }
  }

  void ReadSubfolder(FolderEntry::Contents& contents, const std::u16string& name, const FormerEntries& former,
                     bool mayKeep) {
    const PathEntryType kind = PathManagement::GetPathEntryTypeFromBaseName(name);
    if (!MayHold(contents.kind, kind)) return;

    const AbsoluteIRI location = contents.location.getChild(name);
    const FolderEntryPtr known = former.Find(location);
    if (known && mayKeep) return PlaceOrReport(ReadAgain(known), location, contents);

    auto entry = Read(location, kind, known.get());
    PlaceOrReport(entry ? former.FormerIfEqualTo(entry) : nullptr, location, contents);
  }

  static void PlaceOrReport(FolderEntryPtr entry, const AbsoluteIRI& location, FolderEntry::Contents& contents) {
    if (entry) return Place(std::move(entry), contents.subfolders);
    contents.problems.push_back({location, ProblemKind::Loop, {}});
  }

  const IStorageProvider& provider_;
  const EntriesInDoubt* doubt_ = nullptr;  // null when all are read
  std::vector<FileIdentity> branch_;       // of the folders that enclose the one being read
};

// What `read(provider)` gives; where no storage serves the folder, an entry without items.
template <class Read>
FolderEntryPtr WithProvider(const AbsoluteIRI& folder, const StorageSystemReference& storage, const Read& read) {
  try {
    return read(*storage.ProviderFor(folder));
  } catch (const StorageException& exception) {
    return FolderEntry::Create({folder,
                                folder,
                                PathEntryType::Main,
                                true,
                                {},
                                {},
                                {{folder, KindOf(exception.GetError()), exception.GetError()}}});
  }
}

}  // namespace

FolderEntryPtr ReadMainFolder(const AbsoluteIRI& folder, const StorageSystemReference& storage,
                              const FolderEntry* previous) {
  return WithProvider(folder, storage, [&](const IStorageProvider& provider) {
    return Reader(provider).Read(folder, PathEntryType::Main, previous);
  });
}

FolderEntryPtr ReadMainFolderAgain(const FolderEntryPtr& former, const EntriesInDoubt& doubt,
                                   const StorageSystemReference& storage) {
  FolderEntryPtr entry = WithProvider(former->GetLocation(), storage, [&](const IStorageProvider& provider) {
    return Reader(provider, doubt).ReadAgain(former);
  });
  return FormerIfEqual(former, entry);
}

void EntriesInDoubt::Add(const FolderEntry& entry) { entries_.insert(&entry); }

bool EntriesInDoubt::Is(const FolderEntry& entry) const { return entries_.contains(&entry); }

// Depth is bounded, and few entries are below most.
bool EntriesInDoubt::IsInOrBelow(const FolderEntry& entry) const {
  if (Is(entry)) return true;
  const auto& children = entry.GetChildren();
  return std::any_of(children.begin(), children.end(),
                     [this](const FolderEntryPtr& child) { return IsInOrBelow(*child); });
}

}  // namespace Quorvex::PathEnvironment
