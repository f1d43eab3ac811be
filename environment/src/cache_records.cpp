#include "cache_records.hpp"

#include <algorithm>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <stdexcept>
#include <utility>

#include "folder_names.hpp"
#include "folder_reader.hpp"
#include "special_subfolders.hpp"

namespace Quorvex::PathEnvironment {

using namespace cache;
using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::FileKind;
using foundation::storage::vfs::FileTime;
using foundation::storage::vfs::IStorageProvider;
using foundation::storage::vfs::StorageSystemReference;
using PathManagement::PathEntryType;
using StorageException = foundation::storage::vfs::Exception;

namespace {

FileTime TimeOf(std::int64_t nanoseconds) { return FileTime(std::chrono::nanoseconds(nanoseconds)); }

// A text that was an identifier when it was written.
AbsoluteIRI LocationFrom(std::string_view text, Section section) {
  try {
    return AbsoluteIRI(fl::filesystem::from_bytes(text));
  } catch (const StorageException&) {
    CacheImage::Damaged(section);
  }
}

AbsoluteIRI ChildOf(const AbsoluteIRI& folder, std::string_view name, Section section) {
  try {
    return folder.getChild(fl::filesystem::from_bytes(name));
  } catch (const StorageException&) {
    CacheImage::Damaged(section);
  }
}

PathEntryType KindOf(const EntryRow& row) { return static_cast<PathEntryType>(row.kind); }

bool IsSound(const EntryRow& row) {
  return row.kind <= static_cast<std::uint32_t>(PathEntryType::Resources) &&
         row.finding <= static_cast<std::uint32_t>(FolderProof::Finding::Folder) && row.flags <= kAllFlags;
}

// A main entry comes first, and each entry stands in one before it that may hold its kind, no deeper than any is read.
void CheckRows(std::span<const EntryRow> rows, std::uint32_t first) {
  std::vector<std::size_t> depths(rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const EntryRow& row = rows[i];
    bool fits = IsSound(row);
    if (i == 0) {
      fits = fits && row.parent == kNone && KindOf(row) == PathEntryType::Main;
    } else {
      const std::size_t parent = std::size_t{row.parent} - first;  // far too large for one before the main entry's
      fits = fits && parent < i && MayHold(KindOf(rows[parent]), KindOf(row)) && depths[parent] <= kMaximumDepth;
      if (fits) depths[i] = depths[parent] + 1;
    }
    if (!fits) CacheImage::Damaged(Section::Entries);
  }
}

}  // namespace

CacheRecords::CacheRecords(CacheImage image, StorageSystemReference storage, CacheTrust trust)
    : image_(std::move(image)),
      storage_(std::move(storage)),
      trust_(trust),
      root_([this] {
        const auto bytes = image_.Bytes(Section::Root, 0, image_.SizeOf(Section::Root));
        return LocationFrom({reinterpret_cast<const char*>(bytes.data()), bytes.size()}, Section::Root);
      }()),
      rootPrefix_(fl::filesystem::to_bytes(root_.toString())),
      countOfMains_(image_.CountOf<std::uint32_t>(Section::Mains)) {
  if (countOfMains_-- == 0) CacheImage::Damaged(Section::Mains);  // the last number is the count of all entries
  if (!rootPrefix_.ends_with('/')) rootPrefix_ += '/';
  branches_ = std::make_unique<std::atomic<const Branch*>[]>(countOfMains_);  // NOLINT(modernize-avoid-c-arrays)
}

CacheRecords::~CacheRecords() {
  for (std::size_t main = 0; main < countOfMains_; ++main) {
    const std::unique_ptr<const Branch> branch(branches_[main].load(std::memory_order_acquire));
  }
}

CacheRecords::Extent CacheRecords::ExtentOf(std::size_t main) const {
  const auto bounds = image_.Rows<std::uint32_t>(Section::Mains, main, 2);
  if (bounds[0] >= bounds[1] || bounds[1] > CountOfEntries()) CacheImage::Damaged(Section::Mains);
  return {bounds[0], bounds[1] - bounds[0]};
}

std::size_t CacheRecords::MainOf(std::uint32_t ordinal) const {
  std::size_t first = 0;
  std::size_t last = countOfMains_;
  while (last - first > 1) {
    const std::size_t middle = first + (last - first) / 2;
    (image_.RowAt<std::uint32_t>(Section::Mains, middle) <= ordinal ? first : last) = middle;
  }
  const Extent extent = ExtentOf(first);
  if (ordinal < extent.first || ordinal - extent.first >= extent.count) CacheImage::Damaged(Section::Mains);
  return first;
}

const EntryRow& CacheRecords::RowOf(std::uint32_t ordinal) const {
  return image_.RowAt<EntryRow>(Section::Entries, ordinal);
}

AbsoluteIRI CacheRecords::LocationOfMain(std::size_t main) const {
  const std::string_view relative = image_.TextAt(RowOf(ExtentOf(main).first).name);
  if (relative.empty()) return root_;
  return LocationFrom(std::string(rootPrefix_).append(relative), Section::Texts);
}

std::optional<std::size_t> CacheRecords::FindMain(const AbsoluteIRI& location) const {
  const auto& byLocation = byLocation_.Get([this] {
    std::unordered_map<AbsoluteIRI, std::size_t> places;
    places.reserve(countOfMains_);
    for (std::size_t main = 0; main < countOfMains_; ++main) places.emplace(LocationOfMain(main), main);
    return places;
  });
  const auto found = byLocation.find(location);
  if (found == byLocation.end()) return std::nullopt;
  return found->second;
}

std::vector<AbsoluteIRI> CacheRecords::LocationsOf(std::size_t main, std::span<const EntryRow> rows) const {
  const std::uint32_t first = ExtentOf(main).first;
  std::vector<AbsoluteIRI> locations;
  locations.reserve(rows.size());
  CheckRows(rows, first);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    locations.push_back(i == 0
                            ? LocationOfMain(main)
                            : ChildOf(locations[rows[i].parent - first], image_.TextAt(rows[i].name), Section::Texts));
  }
  return locations;
}

FolderProof CacheRecords::ProofOf(const EntryRow& row) const {
  FolderProof proof;
  proof.finding = static_cast<FolderProof::Finding>(row.finding);
  proof.stamp = {{row.device, row.inode}, TimeOf(row.modificationTime), TimeOf(row.changeTime)};
  proof.readAt = TimeOf(row.readAt);
  for (const LinkRow& link : image_.Rows<LinkRow>(Section::Links, row.firstLink, row.linkCount)) {
    if (link.kind > static_cast<std::uint32_t>(FileKind::Other)) CacheImage::Damaged(Section::Links);
    proof.links.push_back({fl::filesystem::from_bytes(image_.TextAt(link.name)), static_cast<FileKind>(link.kind)});
  }
  return proof;
}

std::vector<PathProblem> CacheRecords::ProblemsOf(const EntryRow& row) const {
  std::vector<PathProblem> problems;
  for (const ProblemRow& problem : image_.Rows<ProblemRow>(Section::Problems, row.firstProblem, row.problemCount)) {
    if (problem.kind > static_cast<std::uint16_t>(ProblemKind::Repeated)) CacheImage::Damaged(Section::Problems);
    const std::error_category& category = problem.isOfSystem != 0 ? std::system_category() : std::generic_category();
    problems.push_back({LocationFrom(image_.TextAt(problem.location), Section::Problems),
                        static_cast<ProblemKind>(problem.kind),
                        problem.error == 0 ? std::error_code() : std::error_code(problem.error, category)});
  }
  return problems;
}

// Which missing folders are one is told by where links lead.
bool CacheRecords::IsMissingElsewhere(const EntryRow& row, const AbsoluteIRI& location,
                                      const IStorageProvider& storage) const {
  if (row.finding != static_cast<std::uint32_t>(FolderProof::Finding::Missing)) return false;
  const AbsoluteIRI recorded =
      row.canonical.size == 0 ? location : LocationFrom(image_.TextAt(row.canonical), Section::Texts);
  try {
    return !(storage.CanonicalLocation(location) == recorded);
  } catch (const StorageException&) {
    return true;
  }
}

Standing CacheRecords::StandingOfMain(std::size_t main) const {
  const Extent extent = ExtentOf(main);
  const auto rows = image_.Rows<EntryRow>(Section::Entries, extent.first, extent.count);
  const std::vector<AbsoluteIRI> locations = LocationsOf(main, rows);
  const auto storage = storage_.FindProvider(root_.getScheme());
  if (!storage) return Standing::Changed;

  const Standing standing = StandingOf(ProofOf(rows[0]), locations[0], *storage);
  if (standing == Standing::Another || IsMissingElsewhere(rows[0], locations[0], *storage)) return Standing::Another;
  for (std::size_t i = 1; i < rows.size() && standing == Standing::Proven; ++i) {
    if (StandingOf(ProofOf(rows[i]), locations[i], *storage) != Standing::Proven) return Standing::Changed;
  }
  return standing;
}

bool CacheRecords::CanBeProven(std::size_t main) const {
  const Extent extent = ExtentOf(main);
  const auto rows = image_.Rows<EntryRow>(Section::Entries, extent.first, extent.count);
  return std::all_of(rows.begin(), rows.end(), [this](const EntryRow& row) { return ProofOf(row).CanProve(); });
}

AbsoluteIRI CacheRecords::CanonicalOf(const EntryRow& row, const AbsoluteIRI& location,
                                      const AbsoluteIRI* parentsCanonical) const {
  const bool isRecorded = row.canonical.size != 0;
  if (parentsCanonical != nullptr && !isRecorded) return parentsCanonical->getChild(location.getName());
  if (trust_ == CacheTrust::Blind) {
    return isRecorded ? LocationFrom(image_.TextAt(row.canonical), Section::Texts) : location;
  }
  // No times prove that no folder on the way has become a link.
  try {
    return storage_.ProviderFor(location)->CanonicalLocation(location);
  } catch (const StorageException&) {
    return location;
  }
}

std::unique_ptr<const CacheRecords::Branch> CacheRecords::MakeBranch(std::size_t main) const {
  const Extent extent = ExtentOf(main);
  const auto rows = image_.Rows<EntryRow>(Section::Entries, extent.first, extent.count);
  const std::vector<AbsoluteIRI> locations = LocationsOf(main, rows);
  std::vector<AbsoluteIRI> canonicals;
  canonicals.reserve(rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const AbsoluteIRI* const parents = i == 0 ? nullptr : &canonicals[rows[i].parent - extent.first];
    canonicals.push_back(CanonicalOf(rows[i], locations[i], parents));
  }

  auto branch = std::make_unique<Branch>();
  branch->entries.resize(rows.size());
  std::vector<SpecialSubfolders> below(rows.size());
  for (std::size_t i = rows.size(); i-- > 0;) {
    SortByName(below[i]);
    branch->entries[i] = MakeEntry(rows[i], locations[i], canonicals[i], std::move(below[i]));
    if (i > 0) Place(branch->entries[i], below[rows[i].parent - extent.first]);
  }
  return branch;
}

CacheRecords::EntryPtr CacheRecords::MakeEntry(const EntryRow& row, const AbsoluteIRI& location,
                                               const AbsoluteIRI& canonical, SpecialSubfolders subfolders) const {
  const PackedNames names = {image_.Bytes(Section::Names, row.namesOffset, row.namesSize), row.nameCount,
                             (row.flags & kIsNarrow) != 0, (row.flags & kHasDottedBaseNames) != 0};
  try {
    return FolderEntry::Create({location,
                                canonical,
                                static_cast<PathEntryType>(row.kind),
                                (row.flags & kComparesExactly) != 0,
                                {},
                                std::move(subfolders),
                                ProblemsOf(row),
                                ProofOf(row)},
                               names);
  } catch (const std::invalid_argument&) {
    CacheImage::Damaged(Section::Names);
  }
}

const CacheRecords::Branch& CacheRecords::BranchOf(std::size_t main) const {
  if (main >= countOfMains_) CacheImage::Damaged(Section::Mains);
  std::atomic<const Branch*>& slot = branches_[main];
  if (const Branch* const made = slot.load(std::memory_order_acquire)) return *made;

  std::unique_ptr<const Branch> branch = MakeBranch(main);
  const std::uint32_t first = ExtentOf(main).first;
  // Whoever comes first has made it for all; the ordinals are known before anybody can have the objects.
  const std::scoped_lock lock(ordinalsMutex_);
  if (const Branch* const made = slot.load(std::memory_order_acquire)) return *made;
  for (std::size_t i = 0; i < branch->entries.size(); ++i) {
    ordinals_.emplace(branch->entries[i].get(), first + static_cast<std::uint32_t>(i));
  }
  slot.store(branch.get(), std::memory_order_release);
  return *branch.release();
}

CacheRecords::EntryPtr CacheRecords::MainEntry(std::size_t main) const { return BranchOf(main).entries.front(); }

CacheRecords::EntryPtr CacheRecords::Entry(std::uint32_t ordinal) const {
  const std::size_t main = MainOf(ordinal);
  return BranchOf(main).entries[ordinal - ExtentOf(main).first];
}

std::optional<std::uint32_t> CacheRecords::OrdinalOf(const PathManagement::IPathEntry& entry) const {
  const std::scoped_lock lock(ordinalsMutex_);
  const auto found = ordinals_.find(&entry);
  if (found == ordinals_.end()) return std::nullopt;
  return found->second;
}

std::vector<CacheRecords::EntryPtr> CacheRecords::EntriesMade() const {
  std::vector<EntryPtr> entries;
  for (std::size_t main = 0; main < countOfMains_; ++main) {
    if (const Branch* const made = branches_[main].load(std::memory_order_acquire)) {
      entries.push_back(made->entries.front());
    }
  }
  return entries;
}

void CacheRecords::AddProblemsOfMain(std::size_t main, std::size_t position, std::vector<PathProblem>& problems) const {
  const Extent extent = ExtentOf(main);
  for (const EntryRow& row : image_.Rows<EntryRow>(Section::Entries, extent.first, extent.count)) {
    for (PathProblem& problem : ProblemsOf(row)) {
      problem.position = position;
      problems.push_back(std::move(problem));
    }
  }
}

}  // namespace Quorvex::PathEnvironment
