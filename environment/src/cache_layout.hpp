// How a toolbox cache lies in its file; docs/formats/toolbox_cache.md tells it for people.
//
// A header, sections that are tables or bytes, and last a checksum for each page between the two, so that a reader
// checks what it touches and nothing else. Numbers are as the machine that wrote them has them, and the header says so.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace Quorvex::PathEnvironment::cache {

inline constexpr std::array<char, 8> kMagic = {'v', 'n', 'x', 'c', 'a', 'c', 'h', 'e'};
inline constexpr std::uint32_t kVersion = 1;
inline constexpr std::uint32_t kByteOrder = 0x01020304;
inline constexpr std::size_t kPageSize = 4096;  ///< the header has the first page for itself
inline constexpr std::size_t kAlignment = 8;    ///< of each section
inline constexpr std::uint32_t kNone = 0xFFFFFFFF;

enum class Section : std::uint8_t {
  Root,      ///< the identifier of the toolbox root, in bytes
  Origin,    ///< the bytes that the list of folders was read from
  List,      ///< ListedRow for each folder of the list, as it was given
  Mains,     ///< the ordinal of each main entry, and the count of all entries
  Entries,   ///< EntryRow for each entry, in walk order
  Links,     ///< LinkRow
  Problems,  ///< ProblemRow
  Texts,     ///< names and identifiers, in bytes
  Names,     ///< packed tables of names
  Buckets,   ///< where in Postings each bucket begins, and the count of all postings
  Postings,  ///< PostingRow, bucket by bucket, in walk order within one
  Sums,      ///< the checksum of each page that is neither the header's nor of this section
};
inline constexpr std::size_t kSections = 12;

struct Span {
  std::uint64_t offset;
  std::uint64_t size;
};

struct Header {
  std::array<char, 8> magic;
  std::uint32_t version;
  std::uint32_t byteOrder;
  std::uint64_t fileSize;
  std::uint64_t
      seed;  ///< of all checksums, another one in each file: a page of another cache does not pass for one of this
  std::int64_t writtenAt;  ///< nanoseconds since the epoch
  std::uint32_t hasList;   ///< whether List and Origin tell what path the main entries make
  std::uint32_t writer;    ///< the user with whose rights the folders were read
  std::uint32_t isExact;   ///< whether storage tells letter cases apart in every folder
  std::uint32_t rights;    ///< a number for those rights: user, groups and capabilities
  std::array<Span, kSections> sections;
  std::uint64_t checksumOfSums;
  std::uint64_t checksum;  ///< of all that stands before it
};

struct Text {
  std::uint32_t offset;
  std::uint32_t size;
};

/// A folder of the list: one that stays, or a later spelling of one that does.
struct ListedRow {
  std::uint32_t main;     ///< the place of the folder that stays among the main entries
  std::uint32_t dropped;  ///< 0, or how it is known to be the same, from 1
  Text location;          ///< of a later spelling
};

struct EntryRow {
  std::uint32_t parent;  ///< an ordinal; kNone for a main entry
  std::uint32_t kind;
  std::uint32_t finding;
  std::uint32_t flags;
  Text name;       ///< the location of a main entry, relative to the root; else the name in the parent
  Text canonical;  ///< an identifier; empty where it follows from the parent's, or is the main entry's location
  std::uint64_t namesOffset;
  std::uint64_t namesSize;
  std::uint32_t nameCount;
  std::uint32_t linkCount;
  std::uint32_t firstLink;
  std::uint32_t firstProblem;
  std::uint32_t problemCount;
  std::uint32_t reserved;
  std::uint64_t device;
  std::uint64_t inode;
  std::int64_t modificationTime;  ///< nanoseconds since the epoch, as all times
  std::int64_t changeTime;
  std::int64_t readAt;
};

inline constexpr std::uint32_t kComparesExactly = 1;
inline constexpr std::uint32_t kIsNarrow = 2;
inline constexpr std::uint32_t kHasDottedBaseNames = 4;
inline constexpr std::uint32_t kAllFlags = 7;

struct LinkRow {
  Text name;
  std::uint32_t kind;
  std::uint32_t reserved;
};

struct ProblemRow {
  Text location;
  std::uint16_t kind;
  std::uint16_t isOfSystem;  ///< whether the error is of the system's category, or else of the generic one
  std::int32_t error;        ///< 0 for none
};

/// A file, under its base name, or a class folder, under its name without '@'.
struct PostingRow {
  std::uint32_t nameHash;
  std::uint32_t extensionHash;
  std::uint32_t entry;
  std::uint32_t item;  ///< in the entry's table of names; kNone for a class folder, which is the entry
};

static_assert(sizeof(Header) == 264 && sizeof(ListedRow) == 16 && sizeof(EntryRow) == 112 && sizeof(LinkRow) == 16 &&
              sizeof(ProblemRow) == 16 && sizeof(PostingRow) == 16);

}  // namespace Quorvex::PathEnvironment::cache
