#include "cache_writer.hpp"

#include <unistd.h>

#include <algorithm>
#include <bit>
#include <chrono>
#include <fl/filesystem/text_codec.hpp>
#include <limits>
#include <random>
#include <stdexcept>
#include <string_view>
#include <type_traits>
#include <utility>

#include "cache_checksum.hpp"
#include "cache_layout.hpp"
#include "cache_seal.hpp"
#include "folder_names.hpp"
#include "process_rights.hpp"

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::FileTime;
using PathManagement::PathEntryType;

namespace {

using namespace cache;

constexpr std::size_t kPostingsInBucket = 8;

template <class Number>
std::uint32_t Checked(Number number) {
  if (static_cast<std::uint64_t>(number) >= kNone) {
    throw std::length_error("a toolbox cache cannot hold more than four billion of anything");
  }
  return static_cast<std::uint32_t>(number);
}

template <class Row>
std::string_view BytesOf(const std::vector<Row>& rows) {
  static_assert(std::has_unique_object_representations_v<Row>);  // no padding that would be written unset
  return {reinterpret_cast<const char*>(rows.data()), rows.size() * sizeof(Row)};
}

std::int64_t NumberOf(FileTime time) { return time.time_since_epoch().count(); }

/// Where an entry really is, as far as the reader can tell from what it knows of the parent.
AbsoluteIRI ExpectedCanonical(const FolderEntry& entry, const FolderEntry* parent) {
  if (parent == nullptr) return entry.GetLocation();
  return parent->GetCanonicalLocation().getChild(entry.GetLocation().getName());
}

/// Gathers the tables of a cache, entry by entry.
class Tables {
 public:
  explicit Tables(const AbsoluteIRI& root) : root_(root) {}

  void AddMain(const FolderEntry& entry) {
    mains_.push_back(Checked(entries_.size()));
    AddEntry(entry, nullptr, kNone);
  }

  void AddList(const DistinctFolders& folders) {
    const auto& kept = folders.GetKept();
    const auto& dropped = folders.GetDropped();
    list_.resize(kept.size() + dropped.size());
    for (std::size_t i = 0; i < kept.size(); ++i) list_[kept[i].position].main = Checked(i);
    for (const DroppedFolder& folder : dropped) {
      list_[folder.position] = {list_[folder.stayingPosition].main, static_cast<std::uint32_t>(folder.reason) + 1,
                                AddText(folder.location.toString())};
    }
  }

  [[nodiscard]] bool IsExact() const {
    return std::all_of(entries_.begin(), entries_.end(),
                       [](const EntryRow& row) { return (row.flags & kComparesExactly) != 0; });
  }

  /// The sections but Sums, in their order.
  std::vector<std::string> ToSections(std::string root, std::string origin) {
    mains_.push_back(Checked(entries_.size()));
    const std::vector<std::uint32_t> buckets = SortIntoBuckets();
    std::vector<std::string> sections;
    sections.push_back(std::move(root));
    sections.push_back(std::move(origin));
    for (const std::string_view rows :
         {BytesOf(list_), BytesOf(mains_), BytesOf(entries_), BytesOf(links_), BytesOf(problems_)}) {
      sections.emplace_back(rows);
    }
    sections.push_back(std::move(texts_));
    sections.push_back(std::move(names_));
    sections.emplace_back(BytesOf(buckets));
    sections.emplace_back(BytesOf(postings_));
    return sections;
  }

 private:
  struct HashedPosting {
    std::uint64_t hash;
    PostingRow row;
  };

  // Depth is bounded by the reader, so recursion is too.
  void AddEntry(const FolderEntry& entry, const FolderEntry* parent, std::uint32_t parentOrdinal) {
    const std::uint32_t ordinal = Checked(entries_.size());
    entries_.push_back(RowOf(entry, parent));
    entries_.back().parent = parentOrdinal;
    AddPostings(entry, ordinal);
    for (const auto& child : entry.GetChildren()) AddEntry(*child, &entry, ordinal);
  }

  [[nodiscard]] std::u16string BelowRoot(const AbsoluteIRI& location) const {
    if (auto relative = RelativeTo(root_, location)) return *std::move(relative);
    throw std::invalid_argument("a folder to be kept in a toolbox cache stands outside its root");
  }

  EntryRow RowOf(const FolderEntry& entry, const FolderEntry* parent) {
    EntryRow row{};
    row.kind = static_cast<std::uint32_t>(entry.GetEntryType());
    row.flags = entry.ComparesExactly(PathManagement::FilenameMatchingPolicy::Native) ? kComparesExactly : 0;
    row.name = AddText(parent == nullptr ? BelowRoot(entry.GetLocation()) : entry.GetLocation().getName());
    if (!(entry.GetCanonicalLocation() == ExpectedCanonical(entry, parent))) {
      row.canonical = AddText(entry.GetCanonicalLocation().toString());
    }
    AddNames(entry.GetNames().GetPacked(), row);
    AddProof(*entry.GetProof(), row);
    AddProblems(entry.GetProblems(), row);
    return row;
  }

  void AddNames(const PackedNames& packed, EntryRow& row) {
    names_.resize((names_.size() + kAlignment - 1) / kAlignment * kAlignment);
    row.namesOffset = names_.size();
    row.namesSize = packed.block.size();
    row.nameCount = packed.count;
    row.flags |= (packed.isNarrow ? kIsNarrow : 0) | (packed.hasDottedBaseNames ? kHasDottedBaseNames : 0);
    names_.append(reinterpret_cast<const char*>(packed.block.data()), packed.block.size());
  }

  void AddProof(const FolderProof& proof, EntryRow& row) {
    row.finding = static_cast<std::uint32_t>(proof.finding);
    row.device = proof.stamp.identity.device;
    row.inode = proof.stamp.identity.inode;
    row.modificationTime = NumberOf(proof.stamp.modificationTime);
    row.changeTime = NumberOf(proof.stamp.changeTime);
    row.readAt = NumberOf(proof.readAt);
    row.firstLink = Checked(links_.size());
    row.linkCount = Checked(proof.links.size());
    for (const LinkedEntry& link : proof.links) {
      links_.push_back({AddText(link.name), static_cast<std::uint32_t>(link.kind), 0});
    }
  }

  void AddProblems(const std::vector<PathProblem>& problems, EntryRow& row) {
    row.firstProblem = Checked(problems_.size());
    row.problemCount = Checked(problems.size());
    for (const PathProblem& problem : problems) {
      const bool isOfSystem = problem.error.category() == std::system_category();
      const bool isKnown = isOfSystem || problem.error.category() == std::generic_category();
      const std::error_code error = isKnown ? problem.error : std::make_error_code(std::errc::io_error);
      problems_.push_back({AddText(problem.location.toString()), static_cast<std::uint16_t>(problem.kind),
                           static_cast<std::uint16_t>(isOfSystem), error.value()});
    }
  }

  void AddPostings(const FolderEntry& entry, std::uint32_t ordinal) {
    if (entry.GetEntryType() == PathEntryType::Class) {
      const std::u16string name = entry.GetLocation().getName().substr(1);
      hashed_.push_back({HashOfName(name), {0, 0, ordinal, kNone}});
    }
    std::uint32_t item = 0;
    entry.ForEachName([&](std::u16string_view baseName, std::u16string_view extension) {
      hashed_.push_back({HashOfName(baseName), {0, KeptOf(HashOfName(extension)), ordinal, item}});
      ++item;
    });
  }

  // Fills postings_, and tells where in it each bucket begins.
  std::vector<std::uint32_t> SortIntoBuckets() {
    const std::size_t count = std::bit_ceil(Checked(hashed_.size()) / kPostingsInBucket + 1);
    std::vector<std::uint32_t> begins(count + 1, 0);
    for (const HashedPosting& posting : hashed_) ++begins[BucketOf(posting.hash, count) + 1];
    for (std::size_t bucket = 0; bucket < count; ++bucket) begins[bucket + 1] += begins[bucket];

    std::vector<std::uint32_t> next = begins;
    postings_.resize(hashed_.size());
    for (const HashedPosting& posting : hashed_) {
      PostingRow& row = postings_[next[BucketOf(posting.hash, count)]++];
      row = posting.row;
      row.nameHash = KeptOf(posting.hash);
    }
    return begins;
  }

  Text AddText(std::u16string_view text) {
    const std::string bytes = fl::filesystem::to_bytes(text);
    const Text place = {Checked(texts_.size()), Checked(bytes.size())};
    texts_ += bytes;
    return place;
  }

  AbsoluteIRI root_;
  std::vector<ListedRow> list_;
  std::vector<std::uint32_t> mains_;
  std::vector<EntryRow> entries_;
  std::vector<LinkRow> links_;
  std::vector<ProblemRow> problems_;
  std::string texts_;
  std::string names_;
  std::vector<HashedPosting> hashed_;
  std::vector<PostingRow> postings_;
};

std::uint64_t AnyNumber() {
  std::random_device device;
  return (std::uint64_t{device()} << 32U) | device();
}

/// A file of `sections`, in which all but the checksums stands.
std::string LayOut(const std::vector<std::string>& sections, Header& header) {
  std::string file(kPageSize, '\0');
  for (std::size_t i = 0; i < sections.size(); ++i) {
    header.sections.at(i) = {file.size(), sections[i].size()};
    file += sections[i];
    file.resize((file.size() + kAlignment - 1) / kAlignment * kAlignment);
  }
  return file;
}

}  // namespace

std::optional<std::u16string> RelativeTo(const AbsoluteIRI& root, const AbsoluteIRI& location) {
  const std::u16string& outer = root.toString();
  std::u16string_view text = location.toString();
  if (!text.starts_with(outer)) return std::nullopt;
  text.remove_prefix(outer.size());
  if (text.empty() || outer.ends_with(u'/')) return std::u16string(text);
  if (!text.starts_with(u'/')) return std::nullopt;
  return std::u16string(text.substr(1));
}

std::string MakeCacheFile(const CacheContents& contents) {
  Tables tables(contents.root);
  for (const auto& entry : contents.mainEntries) tables.AddMain(*entry);
  if (contents.list) tables.AddList(contents.list->folders);

  Header header{};
  header.magic = kMagic;
  header.version = kVersion;
  header.byteOrder = kByteOrder;
  header.seed = AnyNumber();
  header.writtenAt = NumberOf(std::chrono::time_point_cast<std::chrono::nanoseconds>(std::chrono::system_clock::now()));
  header.hasList = contents.list ? 1 : 0;
  header.writer = ::geteuid();
  header.rights = RightsOfThisProcess();
  header.isExact = tables.IsExact() ? 1 : 0;
  std::string file = LayOut(tables.ToSections(fl::filesystem::to_bytes(contents.root.toString()),
                                              contents.list ? contents.list->origin : std::string()),
                            header);
  Seal(file, header);
  return file;
}

}  // namespace Quorvex::PathEnvironment
