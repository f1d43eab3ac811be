// Files that are no cache, or not one for us: each is refused with a reason that can be told.

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <bit>
#include <support/without_privileges.hpp>

#include "disk_folder.hpp"
#include "made_entry.hpp"
#include "toolbox_caches.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using PathManagement::support::WithoutPrivileges;

struct Refusal {
  CacheRefusal kind;
  std::string reason;

  friend bool operator==(const Refusal&, const Refusal&) = default;
  friend void PrintTo(const Refusal& refusal, std::ostream* out) {
    *out << static_cast<int>(refusal.kind) << " \"" << refusal.reason << '"';
  }
};

/// What `ask` is refused for; nothing when it is not.
template <class Asked>
std::optional<Refusal> RefusalOf(const Asked& ask) {
  try {
    ask();
    return std::nullopt;
  } catch (const ToolboxCacheError& error) {
    return Refusal{error.GetRefusal(), error.what()};
  }
}

class ToolboxCacheRefusalTest : public testing::Test {
 protected:
  ToolboxCacheRefusalTest() {
    memory_.WithFiles({u"/t/m/f.x", u"/t/m/private/g.x"});
    WriteCache(File(), InMemory(u"/t"), InMemory(std::vector<std::u16string>{u"/t/m"}));
    bytes_ = *ReadWholeFile(memory_.GetProvider(), File());
  }

  static AbsoluteIRI File() { return InMemory(u"/cache/toolbox"); }

  /// Of the cache that was written.
  [[nodiscard]] const std::string& Bytes() const { return bytes_; }

  [[nodiscard]] std::optional<Refusal> Opening(const std::string& bytes, CacheTrust trust = CacheTrust::Proven) const {
    memory_.GetProvider().AddFile(u"/cache/toolbox", bytes);
    return RefusalOf([trust] { static_cast<void>(OpenCache(File(), trust)); });
  }
  [[nodiscard]] std::optional<Refusal> Checking(const std::string& bytes) const {
    memory_.GetProvider().AddFile(u"/cache/toolbox", bytes);
    return RefusalOf([] { OpenCache(File(), CacheTrust::Blind).Check(); });
  }

 private:
  MemoryStorage memory_;
  std::string bytes_;
};

/// What opening what is called `name` in `disk` is refused for.
std::optional<Refusal> OpeningOnDisk(const DiskFolder& disk, const std::string& name) {
  return RefusalOf([&] { static_cast<void>(OpenCache(disk.LocationOf(name))); });
}

TEST_F(ToolboxCacheRefusalTest, IsNotOfACacheAsItWasWritten) {
  EXPECT_EQ(Opening(Bytes()), std::nullopt);
  EXPECT_EQ(Checking(Bytes()), std::nullopt);
  EXPECT_EQ(Checking(Resealed(Bytes(), [](std::string&) {})), std::nullopt);
}

TEST_F(ToolboxCacheRefusalTest, TellsThatThereIsNoFile) {
  const DiskFolder disk;
  disk.AddLink("dangling", "nothing");
  const Refusal missing{CacheRefusal::Missing, "it is not there"};
  EXPECT_EQ(OpeningOnDisk(disk, "nothing"), missing);
  EXPECT_EQ(OpeningOnDisk(disk, "dangling"), missing);
}

TEST_F(ToolboxCacheRefusalTest, TellsThatTheFileCannotBeRead) {
  const DiskFolder disk;
  disk.AddFolder("folder");
  EXPECT_EQ(OpeningOnDisk(disk, "folder"), (Refusal{CacheRefusal::Unreadable, "it cannot be read: Is a directory"}));
  disk.AddFile("file");
  EXPECT_EQ(OpeningOnDisk(disk, "file/below"),
            (Refusal{CacheRefusal::Unreadable, "it cannot be read: Not a directory"}));
  disk.AddLink("loop", "loop");
  EXPECT_EQ(OpeningOnDisk(disk, "loop"),
            (Refusal{CacheRefusal::Unreadable, "it cannot be read: Too many levels of symbolic links"}));
  ASSERT_EQ(::chmod(disk.PathOf("file").c_str(), 0), 0);
  WithoutPrivileges([&] {
    EXPECT_EQ(OpeningOnDisk(disk, "file"), (Refusal{CacheRefusal::Unreadable, "it cannot be read: Permission denied"}));
  });
}

TEST_F(ToolboxCacheRefusalTest, DoesNotWaitForAFifo) {
  const DiskFolder disk;
  disk.AddFifo("fifo");
  const auto refusal = OpeningOnDisk(disk, "fifo");
  ASSERT_TRUE(refusal);
  EXPECT_EQ(refusal->kind, CacheRefusal::Unreadable);
  EXPECT_THAT(refusal->reason, testing::StartsWith("it cannot be read: "));
}

TEST_F(ToolboxCacheRefusalTest, TellsThatTheFileIsNoCache) {
  EXPECT_EQ(Opening(""), (Refusal{CacheRefusal::Foreign, "it is empty"}));
  const Refusal foreign{CacheRefusal::Foreign, "it is no toolbox cache"};
  EXPECT_EQ(Opening("vnxcach"), foreign);
  EXPECT_EQ(Opening(std::string(10'000, 'v')), foreign);
}

TEST_F(ToolboxCacheRefusalTest, TellsThatTheFormatIsAnotherOne) {
  const auto inVersion2 = [](cache::Header& header) { header.version = 2; };
  const Refusal otherVersion{CacheRefusal::OtherVersion, "its format is version 2, not 1"};
  EXPECT_EQ(Opening(WithHeader(Bytes(), inVersion2)), otherVersion);
  // What else another version has in its header, nobody knows.
  std::string other = WithHeader(Bytes(), inVersion2);
  std::fill(other.begin() + 16, other.end(), 'x');
  EXPECT_EQ(Opening(other), otherVersion);
}

TEST_F(ToolboxCacheRefusalTest, TellsThatAMachineOfAnotherKindWroteIt) {
  std::string turned = Bytes();
  for (const std::size_t number : {offsetof(cache::Header, version), offsetof(cache::Header, byteOrder)}) {
    std::reverse(turned.begin() + static_cast<std::ptrdiff_t>(number),
                 turned.begin() + static_cast<std::ptrdiff_t>(number) + 4);
  }
  EXPECT_EQ(Opening(turned), (Refusal{CacheRefusal::OtherByteOrder, "it was written by a machine of another kind"}));
}

TEST_F(ToolboxCacheRefusalTest, TellsThatAnotherUserReadTheFolders) {
  const auto ofAnother = WithHeader(Bytes(), [](cache::Header& header) { header.writer = ::geteuid() + 7; });
  EXPECT_EQ(Opening(ofAnother),
            (Refusal{CacheRefusal::OtherUser, "its folders were read with the rights of another user, number " +
                                                  std::to_string(::geteuid() + 7)}));
  EXPECT_EQ(Opening(ofAnother, CacheTrust::Blind), std::nullopt);
}

TEST_F(ToolboxCacheRefusalTest, TellsThatAPieceIsMissing) {
  EXPECT_EQ(Opening(Bytes().substr(0, 100)), (Refusal{CacheRefusal::CutShort, "it is cut short: 100 bytes are left"}));
  const std::string whole = std::to_string(Bytes().size());
  const std::string less = std::to_string(Bytes().size() - 1);
  EXPECT_EQ(Opening(Bytes().substr(0, Bytes().size() - 1)),
            (Refusal{CacheRefusal::CutShort,
                     "it is cut short or goes on too long: " + less + " bytes in place of " + whole}));
}

TEST_F(ToolboxCacheRefusalTest, TellsThatThereIsMoreThanWasWritten) {
  EXPECT_EQ(
      Opening(Bytes() + 'x'),
      (Refusal{CacheRefusal::CutShort, "it is cut short or goes on too long: " + std::to_string(Bytes().size() + 1) +
                                           " bytes in place of " + std::to_string(Bytes().size())}));
}

TEST_F(ToolboxCacheRefusalTest, TellsDamageToTheHeader) {
  std::string damaged = Bytes();
  damaged.at(offsetof(cache::Header, seed)) ^= 1;
  EXPECT_EQ(Opening(damaged), (Refusal{CacheRefusal::Damaged, "it is damaged: its header is not as it was written"}));
}

TEST_F(ToolboxCacheRefusalTest, TellsDamageToTheChecksums) {
  std::string damaged = Bytes();
  damaged.back() ^= 1;
  EXPECT_EQ(Opening(damaged), (Refusal{CacheRefusal::Damaged, "it is damaged: its checksums do not fit together"}));
}

TEST_F(ToolboxCacheRefusalTest, TellsDamageToAPageOnceItIsTouched) {
  EXPECT_EQ(Checking(WithDamageIn(Bytes(), 1)),
            (Refusal{CacheRefusal::Damaged, "it is damaged: its page 1 is not as it was written"}));
}

TEST_F(ToolboxCacheRefusalTest, TellsASectionThatIsNotWithinTheFile) {
  const auto beyondTheEnd = [](cache::Header& header) {
    header.sections.at(static_cast<std::size_t>(cache::Section::Entries)).size += 112'000;
  };
  EXPECT_EQ(Opening(WithHeader(Bytes(), beyondTheEnd)),
            (Refusal{CacheRefusal::Damaged, "it is damaged: its entries do not fit together"}));
  const auto aroundTheNumbers = [](cache::Header& header) {
    header.sections.at(static_cast<std::size_t>(cache::Section::Texts)).size = ~std::uint64_t{0};
  };
  EXPECT_EQ(Opening(WithHeader(Bytes(), aroundTheNumbers)),
            (Refusal{CacheRefusal::Damaged, "it is damaged: its texts do not fit together"}));
}

TEST_F(ToolboxCacheRefusalTest, TellsSectionsThatOverlap) {
  const auto overlapping = [](cache::Header& header) {
    header.sections.at(static_cast<std::size_t>(cache::Section::Texts)).offset -= 8;
  };
  EXPECT_EQ(Opening(WithHeader(Bytes(), overlapping)),
            (Refusal{CacheRefusal::Damaged, "it is damaged: its texts do not fit together"}));
}

TEST_F(ToolboxCacheRefusalTest, TellsAPageOfAnotherCacheFromItsOwn) {
  const std::string first = Bytes();
  WriteCache(File(), InMemory(u"/t"), InMemory(std::vector<std::u16string>{u"/t/m"}));
  const std::string second = *ReadWholeFile(*Session().ProviderFor(File()), File());
  ASSERT_EQ(first.size(), second.size());
  const std::size_t end = HeaderOf(first).sections.at(static_cast<std::size_t>(cache::Section::Sums)).offset;
  std::string spliced = first;
  spliced.replace(cache::kPageSize, end - cache::kPageSize, second, cache::kPageSize, end - cache::kPageSize);
  ASSERT_NE(spliced, first);  // the folders were read at another time
  EXPECT_EQ(Checking(spliced), (Refusal{CacheRefusal::Damaged, "it is damaged: its page 1 is not as it was written"}));
  std::string headed = second;
  headed.replace(cache::kPageSize, std::string::npos, first, cache::kPageSize, std::string::npos);
  ASSERT_NE(headed, second);
  EXPECT_NE(Opening(headed), std::nullopt);
}

// A row changed where all checksums fit, as no accident does.
class ForgedCacheTest : public ToolboxCacheRefusalTest {
 protected:
  template <class Row, class Change>
  [[nodiscard]] std::string WithRow(cache::Section section, std::size_t index, const Change& change) const {
    const std::size_t offset =
        HeaderOf(Bytes()).sections.at(static_cast<std::size_t>(section)).offset + index * sizeof(Row);
    return Resealed(Bytes(), [&](std::string& file) {
      Row row{};
      std::memcpy(&row, file.data() + offset, sizeof(row));
      change(row);
      std::memcpy(file.data() + offset, &row, sizeof(row));
    });
  }
  template <class Change>
  [[nodiscard]] std::string WithEntry(std::size_t index, const Change& change) const {
    return WithRow<cache::EntryRow>(cache::Section::Entries, index, change);
  }
};

Refusal DoNotFit(const std::string& section) {
  return {CacheRefusal::Damaged, "it is damaged: its " + section + " do not fit together"};
}

TEST_F(ForgedCacheTest, IsRefusedForEntriesThatCannotBeOnesParents) {
  using cache::EntryRow;
  EXPECT_EQ(Checking(WithEntry(1, [](EntryRow& row) { row.parent = 1; })), DoNotFit("entries"));
  EXPECT_EQ(Checking(WithEntry(1, [](EntryRow& row) { row.parent = cache::kNone; })), DoNotFit("entries"));
  EXPECT_EQ(Checking(WithEntry(0, [](EntryRow& row) { row.parent = 0; })), DoNotFit("entries"));
}

TEST_F(ForgedCacheTest, IsRefusedForAFolderOfAKindThatItsParentCannotHold) {
  const auto asAuxiliary = [](cache::EntryRow& row) {
    row.kind = static_cast<std::uint32_t>(PathEntryType::Auxiliary);
  };
  EXPECT_EQ(Checking(WithEntry(1, asAuxiliary)), DoNotFit("entries"));
  const auto asMain = [](cache::EntryRow& row) { row.kind = static_cast<std::uint32_t>(PathEntryType::Main); };
  EXPECT_EQ(Checking(WithEntry(1, asMain)), DoNotFit("entries"));
  EXPECT_EQ(Checking(WithEntry(1, [](cache::EntryRow& row) { row.kind = 77; })), DoNotFit("entries"));
}

TEST_F(ForgedCacheTest, IsRefusedForPlacesOutsideTheirSections) {
  using cache::EntryRow;
  EXPECT_EQ(Checking(WithEntry(0, [](EntryRow& row) { row.namesOffset = ~std::uint64_t{0}; })), DoNotFit("names"));
  EXPECT_EQ(Checking(WithEntry(0, [](EntryRow& row) { row.namesSize += 8; })), DoNotFit("names"));
  EXPECT_EQ(Checking(WithEntry(0, [](EntryRow& row) { row.name.size = cache::kNone; })), DoNotFit("texts"));
  EXPECT_EQ(Checking(WithEntry(0, [](EntryRow& row) { row.linkCount = 1; })), DoNotFit("links"));
  EXPECT_EQ(Checking(WithEntry(0, [](EntryRow& row) { row.problemCount = 1; })), DoNotFit("problems"));
  EXPECT_EQ(Checking(WithRow<std::uint32_t>(cache::Section::Mains, 1, [](std::uint32_t& end) { end = 3; })),
            DoNotFit("main entries"));
  EXPECT_EQ(Checking(WithRow<cache::PostingRow>(cache::Section::Postings, 0,
                                                [](cache::PostingRow& posting) { posting.entry = 2; })),
            DoNotFit("postings"));
  EXPECT_EQ(Checking(WithRow<cache::ListedRow>(cache::Section::List, 0, [](cache::ListedRow& row) { row.main = 1; })),
            DoNotFit("main entries"));
}

TEST_F(ForgedCacheTest, IsRefusedForFoldersNestedMoreDeeplyThanAnyThatAreRead) {
  FolderEntryPtr entry;
  std::u16string location = u"memory:///t/deep";
  std::vector<std::u16string> locations = {location};
  for (int depth = 0; depth < 200; ++depth) locations.push_back(location += u"/+p");
  for (; !locations.empty(); locations.pop_back()) {
    MadeEntry made(locations.back());
    if (locations.size() > 1) made.OfKind(PathEntryType::Package);
    if (entry) made.WithPackage(entry);
    entry = made.Create();
  }
  const FolderEntryFactory entries(Session(), {entry});
  EXPECT_EQ(RefusalOf([&] { WriteToolboxCacheFile(File(), InMemory(u"/t"), entries); }), DoNotFit("entries"));
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
