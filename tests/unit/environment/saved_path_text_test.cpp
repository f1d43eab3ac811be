#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <search_path_environment/saved_path_error.hpp>
#include <search_path_environment/saved_path_text.hpp>
#include <string>
#include <support/random_source.hpp>
#include <support/random_text.hpp>
#include <vector>

namespace Quorvex::PathEnvironment {
namespace {

using foundation::storage::vfs::AbsoluteIRI;
using PathManagement::support::RandomSource;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Property;
using testing::StartsWith;
using testing::ThrowsMessage;

const std::string kFirst = "# search path, version 1\n";

AbsoluteIRI Folder(const std::u16string& path) { return AbsoluteIRI(u"file://" + path); }

SavedPathText::Folders FoldersIn(const std::string& lines) { return SavedPathText::Parse(kFirst + lines).GetFolders(); }

// What a text of these folders holds, apart from what every text begins with.
std::string LinesFor(const SavedPathText::Folders& folders) {
  return SavedPathText::Parse(kFirst).WithFolders(folders).ToBytes().substr(kFirst.size());
}

auto Refuses(std::size_t line, const std::string& reason) {
  return testing::Throws<SavedPathError>(
      AllOf(Property(&SavedPathError::GetLine, line),
            Property(&SavedPathError::what, testing::StrEq("line " + std::to_string(line) + ": " + reason))));
}

TEST(SavedPathText, HoldsOneFolderALineInPathOrder) {
  EXPECT_THAT(FoldersIn("/b\n/a\n/b\n"), ElementsAre(Folder(u"/b"), Folder(u"/a"), Folder(u"/b")));
}

TEST(SavedPathText, TellsANewReaderWhatItIs) {
  EXPECT_THAT(SavedPathText().ToBytes(), StartsWith(kFirst + "# One folder a line"));
  EXPECT_THAT(SavedPathText().GetFolders(), IsEmpty());
}

TEST(SavedPathText, WritesAFolderAsAPathWhereAPathSaysItAll) {
  EXPECT_EQ(LinesFor({Folder(u"/opt/tool-box_2/+pkg/@Cls.x")}), "/opt/tool-box_2/+pkg/@Cls.x\n");
  EXPECT_EQ(LinesFor({Folder(u"/a%20b/50%25/%23x")}), "/a b/50%/#x\n");
  EXPECT_EQ(LinesFor({Folder(u"/gr\u00FC\u00DFe/\U0001F600")}),
            "/gr\xC3\xBC\xC3\x9F"
            "e/\xF0\x9F\x98\x80\n");
  EXPECT_EQ(LinesFor({Folder(u"/")}), "/\n");
}

TEST(SavedPathText, WritesAFolderAsAnIdentifierWhereAPathWouldNotDo) {
  EXPECT_EQ(LinesFor({Folder(u"/a%0Ab")}), "file:///a%0Ab\n");
  EXPECT_EQ(LinesFor({Folder(u"/a%FFb")}), "file:///a%FFb\n");
  EXPECT_EQ(LinesFor({Folder(u"/a%2Fb")}), "file:///a%2Fb\n");
  EXPECT_EQ(LinesFor({AbsoluteIRI(u"file://host/share")}), "file://host/share\n");
  EXPECT_EQ(LinesFor({AbsoluteIRI(u"memory:///tree")}), "memory:///tree\n");
}

TEST(SavedPathText, ReadsAnIdentifierOfAPathAsThatPath) {
  EXPECT_EQ(FoldersIn("file:///a%20b\n"), FoldersIn("/a b\n"));
}

TEST(SavedPathText, BringsAFolderIntoNormalForm) {
  EXPECT_THAT(FoldersIn("/a//b/\n/a/./b\n"), ElementsAre(Folder(u"/a/b"), Folder(u"/a/b")));
}

TEST(SavedPathText, TakesTheLineEndsOfOtherSystems) {
  EXPECT_EQ(SavedPathText::Parse("# search path, version 1\r\n/a\r\n").GetFolders(), FoldersIn("/a\n"));
}

TEST(SavedPathText, LeavesCommentsWhereTheyWere) {
  const std::string bytes = kFirst + "# of the whole\n\n# of a\n/a\n\n# of b\n/b\n# at the end\n";
  EXPECT_EQ(SavedPathText::Parse(bytes).ToBytes(), bytes);
}

TEST(SavedPathText, LetsACommentGoWhereItsFolderGoes) {
  const auto path = SavedPathText::Parse(kFirst + "# of the whole\n\n# of a\n/a\n# of b\n/b\n# at the end\n");
  EXPECT_EQ(path.WithFolders({Folder(u"/new"), Folder(u"/b"), Folder(u"/a")}).ToBytes(),
            kFirst + "# of the whole\n\n/new\n# of b\n/b\n# of a\n/a\n# at the end\n");
}

TEST(SavedPathText, LeavesOutTheCommentOfAFolderThatIsGone) {
  const auto path = SavedPathText::Parse(kFirst + "\n# of a\n/a\n# of b\n/b\n");
  EXPECT_EQ(path.WithFolders({Folder(u"/b")}).ToBytes(), kFirst + "\n# of b\n/b\n");
}

TEST(SavedPathText, WritesACommentOnceWhenItsFolderIsRepeated) {
  const auto path = SavedPathText::Parse(kFirst + "\n# of a\n/a\n");
  EXPECT_EQ(path.WithFolders({Folder(u"/a"), Folder(u"/a")}).ToBytes(), kFirst + "\n# of a\n/a\n/a\n");
}

TEST(SavedPathText, PutsTheFirstFolderBelowTheExplanation) {
  const auto path = SavedPathText::Parse(SavedPathText().ToBytes());
  EXPECT_EQ(path.WithFolders({Folder(u"/a")}).ToBytes(), SavedPathText().ToBytes() + "/a\n");
}

TEST(SavedPathText, RefusesAnotherFile) {
  EXPECT_THAT([] { return SavedPathText::Parse("/a\n/b\n"); }, Refuses(1, "it should be \"# search path, version 1\""));
  EXPECT_THAT([] { return SavedPathText::Parse("# search path, version 2\n"); },
              Refuses(1, "it should be \"# search path, version 1\""));
  EXPECT_THAT([] { return SavedPathText::Parse("\n" + kFirst); },
              Refuses(1, "it should be \"# search path, version 1\""));
}

TEST(SavedPathText, RefusesOneThatWasCutOff) {
  const std::string reason = "it does not end with a newline, so it may be cut off";
  EXPECT_THAT([] { return SavedPathText::Parse(""); }, Refuses(1, reason));
  EXPECT_THAT([] { return SavedPathText::Parse("# search pa"); }, Refuses(1, reason));
  EXPECT_THAT([] { return SavedPathText::Parse(kFirst + "/a\n/opt/tool"); }, Refuses(3, reason));
}

TEST(SavedPathText, RefusesALineThatNamesNoFolder) {
  EXPECT_THAT([] { return SavedPathText::Parse(kFirst + "/a\nb/c\n"); },
              Refuses(3, "\"b/c\" is neither an absolute path nor an identifier"));
  EXPECT_THAT([] { return SavedPathText::Parse(kFirst + " /a\n"); },
              Refuses(2, "\" /a\" is neither an absolute path nor an identifier"));
  EXPECT_THAT([] { return SavedPathText::Parse(kFirst + "file:x\n"); },
              Refuses(2, "\"file:x\" is neither an absolute path nor an identifier"));
}

TEST(SavedPathText, RefusesAMalformedIdentifierWithItsText) {
  EXPECT_THAT([] { return SavedPathText::Parse(kFirst + "file:///a?b\n"); },
              ThrowsMessage<SavedPathError>(AllOf(StartsWith("line 2: "), HasSubstr("file:///a?b"))));
}

TEST(SavedPathText, RefusesControlCharacters) {
  EXPECT_THAT([] { return SavedPathText::Parse(kFirst + std::string("/a\0b\n", 5)); },
              Refuses(2, "it holds a control character"));
  EXPECT_THAT([] { return SavedPathText::Parse(kFirst + "# \x1B[31m\n"); }, Refuses(2, "it holds a control character"));
}

constexpr int kRounds = 500;

TEST(SavedPathText, GivesBackWhateverFoldersItIsGiven) {
  RandomSource random = RandomSource::OfThisRun(20);
  SCOPED_TRACE(random.Describe());
  for (int round = 0; round < kRounds; ++round) {
    SavedPathText::Folders folders;
    for (std::size_t count = random.Below(5); count > 0; --count) {
      const std::string name = foundation::support::RandomNameBytes(random);
      folders.push_back(Folder(u"/x").getChild(fl::filesystem::from_bytes(name)));
    }
    const std::string bytes = SavedPathText().WithFolders(folders).ToBytes();
    ASSERT_EQ(SavedPathText::Parse(bytes).GetFolders(), folders) << bytes;
  }
}

TEST(SavedPathText, IsWrittenAsItWasRead) {
  RandomSource random = RandomSource::OfThisRun(20);
  SCOPED_TRACE(random.Describe());
  const std::vector<std::string> lines = {"/a", "/b", "/c d", "# x", "", "#", "memory:///m"};
  for (int round = 0; round < kRounds; ++round) {
    std::string bytes = kFirst;
    for (std::size_t count = random.Below(10); count > 0; --count) bytes += random.Pick(lines) + '\n';
    ASSERT_EQ(SavedPathText::Parse(bytes).ToBytes(), bytes);
  }
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
