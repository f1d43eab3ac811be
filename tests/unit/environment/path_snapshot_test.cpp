#define XXH_INLINE_ALL
#include <gmock/gmock.h>
#include <xxhash.h>

#include <array>
#include <cstdio>
#include <search_path_environment/path_snapshot.hpp>
#include <search_path_environment/utc_time.hpp>
#include <string>
#include <vector>

#include "memory_storage.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Property;
using testing::SizeIs;
using testing::StrEq;
using testing::Throws;

const auto kNoon = *TimeFromText("2026-11-21T12:00:00Z");
const std::string kBeginning = "vornixpath-snapshot 1\ntaken 2026-11-21T12:00:00Z\n";

std::string WithChecksum(const std::string& lines) {
  std::array<char, 17> digits = {};
  static_cast<void>(std::snprintf(digits.data(), digits.size(), "%016llx",
                                  static_cast<unsigned long long>(XXH3_64bits(lines.data(), lines.size()))));
  return lines + "checksum " + digits.data() + '\n';
}

PathSnapshot Parsed(const std::string& lines) { return PathSnapshot::Parse(WithChecksum(kBeginning + lines)); }

auto Refuses(std::size_t line, const std::string& reason) {
  return Throws<SnapshotError>(
      AllOf(Property(&SnapshotError::GetLine, line),
            Property(&SnapshotError::what, StrEq("line " + std::to_string(line) + ": " + reason))));
}

const FolderEntry& MainEntry(const FolderPath& path, std::size_t index) {
  return static_cast<const FolderEntry&>(*path.GetMainEntries()->at(index));
}

class ASnapshot : public testing::Test {
 protected:
  ASnapshot() {
    storage_
        .WithFiles({u"/a/foo.vnx", u"/a/100% new\nline.vnx", u"/a/private/secret.vnx", u"/a/@Cls/Cls.vnx",
                    u"/a/+pkg/inner.vnx", u"/a/+pkg/@Deep/Deep.vnx", u"/a/resources/labels.vnx", u"/b/foo.vnx"})
        .WithFolders({u"/empty"})
        .WithLink(u"/link", u"/b")
        .WithLink(u"/a/+loop", u"/a");
  }

  [[nodiscard]] std::shared_ptr<const FolderPath> Path() const {
    return storage_.Path({u"/a", u"/gone", u"/a", u"/link", u"/empty"});
  }

  MemoryStorage storage_;
};

TEST_F(ASnapshot, HoldsThePathThatWasKept) {
  const auto path = Path();

  const PathSnapshot again = PathSnapshot::Parse(PathSnapshot{path, kNoon}.ToBytes());

  EXPECT_EQ(again.taken, kNoon);
  EXPECT_EQ(again.path->GetPositions(), path->GetPositions());
  EXPECT_EQ(again.path->GetProblems(), path->GetProblems());
  ASSERT_THAT(*again.path->GetMainEntries(), SizeIs(4));
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_TRUE(MainEntry(*again.path, i).HoldsTheSameAs(MainEntry(*path, i))) << i;
    EXPECT_EQ(MainEntry(*again.path, i).GetCanonicalLocation(), MainEntry(*path, i).GetCanonicalLocation()) << i;
  }
}

TEST_F(ASnapshot, IsWrittenAlikeWhenItWasRead) {
  const std::string bytes = PathSnapshot{Path(), kNoon}.ToBytes();

  EXPECT_EQ(PathSnapshot::Parse(bytes).ToBytes(), bytes);
}

TEST_F(ASnapshot, IsReadWithoutTheStorageThatItCameFrom) {
  const std::string bytes = PathSnapshot{Path(), kNoon}.ToBytes();
  storage_.GetProvider().Remove(InMemory(u"/b/foo.vnx"));

  const auto path = PathSnapshot::Parse(bytes).path;

  EXPECT_EQ(MainEntry(*path, 2).GetItems()->front()->baseName, u"foo");
}

TEST_F(ASnapshot, KeepsTheEntriesOfItsPredecessorWhereFoldersAreTheSame) {
  const auto path = Path();

  const PathSnapshot again = PathSnapshot::Parse(PathSnapshot{path, kNoon}.ToBytes(), path.get());

  EXPECT_EQ(*again.path->GetMainEntries(), *path->GetMainEntries());
}

TEST_F(ASnapshot, KeepsTheSubfoldersThatAreTheSameInAFolderThatIsNot) {
  const auto before = Path();
  storage_.WithFiles({u"/a/new.vnx"});
  const std::string bytes = PathSnapshot{Path(), kNoon}.ToBytes();

  const auto after = PathSnapshot::Parse(bytes, before.get()).path;

  EXPECT_NE(after->GetMainEntries()->front(), before->GetMainEntries()->front());
  EXPECT_EQ(MainEntry(*after, 0).GetChildren(), MainEntry(*before, 0).GetChildren());
  EXPECT_EQ(after->GetMainEntries()->back(), before->GetMainEntries()->back());
}

TEST_F(ASnapshot, OfStorageThatIgnoresLetterCaseIgnoresIt) {
  const MemoryStorage caseless(NameComparison::IgnoreCase, u"caseless");
  caseless.GetProvider().AddFile(u"/a/foo.vnx");

  const auto path = PathSnapshot::Parse(PathSnapshot{caseless.Path({u"/a"}), kNoon}.ToBytes()).path;

  EXPECT_FALSE(MainEntry(*path, 0).ComparesExactly(PathManagement::FilenameMatchingPolicy::Native));
}

TEST_F(ASnapshot, IsRefusedWhicheverByteWasChanged) {
  const std::string bytes = PathSnapshot{Path(), kNoon}.ToBytes();
  std::vector<std::size_t> taken;

  for (std::size_t i = 0; i < bytes.size(); ++i) {
    std::string damaged = bytes;
    damaged[i] = static_cast<char>(damaged[i] ^ 1);
    try {
      static_cast<void>(PathSnapshot::Parse(damaged));
      taken.push_back(i);
    } catch (const SnapshotError& error) {
      EXPECT_GE(error.GetLine(), 1);
    }
  }

  EXPECT_THAT(taken, IsEmpty());
}

TEST_F(ASnapshot, IsRefusedWhereverItWasCutOff) {
  const std::string bytes = PathSnapshot{Path(), kNoon}.ToBytes();

  for (std::size_t length = 0; length < bytes.size(); ++length) {
    EXPECT_THROW(static_cast<void>(PathSnapshot::Parse(bytes.substr(0, length))), SnapshotError) << length;
  }
}

TEST(SnapshotText, SaysOneThingALine) {
  MemoryStorage storage;
  storage.WithFiles({u"/a/10%.vnx", u"/a/private/secret.vnx"}).WithLink(u"/link", u"/a");

  const std::string bytes = PathSnapshot{storage.Path({u"/link", u"/gone", u"/link"}), kNoon}.ToBytes();

  EXPECT_EQ(bytes, WithChecksum(kBeginning + "folder 1 memory:///link\n"
                                             "canonical memory:///a\n"
                                             "file 10%25.vnx\n"
                                             "subfolder private\n"
                                             "canonical memory:///a/private\n"
                                             "file secret.vnx\n"
                                             "end\n"
                                             "end\n"
                                             "folder 2 memory:///gone\n"
                                             "problem missing generic:2 memory:///gone\n"
                                             "end\n"
                                             "repeated 3 memory:///link\n"));
}

TEST(SnapshotText, OfNoFolderIsFine) { EXPECT_THAT(*Parsed("").path->GetMainEntries(), IsEmpty()); }

TEST(SnapshotText, GivesNamesBackByteForByte) {
  const auto path = Parsed("folder 1 file:///a\nfile %0a%25%7F\xFF \xC3\xA9\nend\n").path;

  EXPECT_EQ(MainEntry(*path, 0).GetItems()->front()->baseName, u"\n%\x7F\xDCFF \u00E9");
}

TEST(SnapshotText, IsRefusedWhenItIsSomethingElse) {
  EXPECT_THAT([] { static_cast<void>(PathSnapshot::Parse("# search path, version 1\n/a\n")); },
              Refuses(1, "this is no snapshot of a path, or it was cut off"));
  EXPECT_THAT([] { static_cast<void>(PathSnapshot::Parse(WithChecksum("something\n"))); },
              Refuses(1, "this is no snapshot of a path"));
  EXPECT_THAT([] { static_cast<void>(PathSnapshot::Parse(WithChecksum("vornixpath-snapshot 2\n"))); },
              Refuses(1, "a snapshot of version \"2\" is not understood here"));
  EXPECT_THAT([] { static_cast<void>(PathSnapshot::Parse(WithChecksum("vornixpath-snapshot 1\ntaken now\n"))); },
              Refuses(2, "\"now\" is no time"));
}

TEST(SnapshotText, IsRefusedWithALineAndAReason) {
  struct Case {
    std::string lines;
    std::size_t line;
    std::string reason;
  };
  const std::string folder = "folder 1 file:///a\n";
  const std::vector<Case> cases = {
      {"folder one file:///a\n", 3, "\"one\" is no number"},
      {"folder 0 file:///a\n", 3, "0 is not the place of a further folder"},
      {"folder 1\n", 3, "something is missing after \"1\""},
      {"folder 1 file:rel\n", 3, "\"file:rel\" is relative to no folder"},
      {folder, 4, "\"checksum\" cannot stand here"},
      {folder + "end\n" + folder, 5, "1 is not the place of a further folder"},
      {folder + "end\nfolder 2 file:///a\n", 5, "\"file:///a\" stands here already"},
      {folder + "end\nrepeated 1 file:///a\n", 5, "1 is not the place of a further folder"},
      {folder + "problem odd none file:///a\n", 4, "\"odd\" is no kind of problem"},
      {folder + "problem loop odd:1 file:///a\n", 4, "\"odd:1\" is no error"},
      {folder + "problem loop generic:0 file:///a\n", 4, "\"generic:0\" is no error"},
      {folder + "problem loop system:x file:///a\n", 4, "\"x\" is no number"},
      {folder + "file \n", 4, "\"\" is no file name"},
      {folder + "file ..\n", 4, "\"..\" is no file name"},
      {folder + "file a/b\n", 4, "\"a/b\" is no file name"},
      {folder + "file a%00\n", 4, "\"a%00\" is no file name"},
      {folder + "file 100%\n", 4, "\"100%\" has a '%' too many"},
      {folder + "file 1%zz\n", 4, "\"1%zz\" has a '%' too many"},
      {folder + "subfolder plain\n", 4, "\"plain\" cannot be a subfolder here"},
      {folder + "subfolder private\nsubfolder private\n", 5, "\"private\" cannot be a subfolder here"},
      {folder + "subfolder private\nend\nsubfolder private\n", 6, "\"private\" stands here already"},
      {folder + "subfolder private\nend\nfile late.vnx\n", 6, "\"file\" cannot stand here"},
      {folder + "end\nend\n", 5, "\"end\" cannot stand here"},
      {"repeated 1 file:///a\nfolder 2 file:///a\n", 4, "\"folder\" cannot stand here"},
      {"checksum 1\n", 4, "something stands after the checksum"},
  };

  for (const Case& bad : cases) {
    EXPECT_THAT([&] { static_cast<void>(Parsed(bad.lines)); }, Refuses(bad.line, bad.reason)) << bad.lines;
  }
}

TEST(SnapshotText, IsRefusedWhenFoldersAreNestedEndlessly) {
  std::string lines = "folder 1 file:///a\n";
  for (int depth = 0; depth < 100000; ++depth) lines += "subfolder +p\n";

  EXPECT_THROW(static_cast<void>(Parsed(lines)), SnapshotError);
}

TEST(SnapshotText, HoldsFoldersAsDeepAsAnyThatIsRead) {
  MemoryStorage storage;
  std::u16string deep = u"/a";
  for (int depth = 0; depth < 200; ++depth) deep += u"/+p";
  storage.WithFiles({deep + u"/foo.vnx"});
  const auto path = storage.Path({u"/a"});

  const auto again = PathSnapshot::Parse(PathSnapshot{path, kNoon}.ToBytes()).path;

  EXPECT_TRUE(MainEntry(*again, 0).HoldsTheSameAs(MainEntry(*path, 0)));
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
