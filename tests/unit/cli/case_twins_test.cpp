#include "case_twins.hpp"

#include <gmock/gmock.h>

#include <unit/environment/memory_storage.hpp>

#include "told_findings.hpp"

namespace vornixpath {
namespace {

using Quorvex::PathEnvironment::InMemory;
using Quorvex::PathEnvironment::MemoryStorage;
using Quorvex::PathEnvironment::NameComparison;
using Quorvex::PathEnvironment::ReadPath;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

std::vector<std::string> TwinsAmong(const std::vector<std::u16string>& files,
                                    const std::vector<std::u16string>& extensions = {u".vnx"},
                                    NameComparison comparison = NameComparison::Exact) {
  const MemoryStorage storage =
      std::move(MemoryStorage(comparison).WithFolders({u"/a", u"/b", u"/c"}).WithFiles(files));
  return InWords(LetterCaseTwins(Examination(storage.Path({u"/a", u"/b", u"/c"}), extensions).Get()));
}

TEST(LetterCaseTwins, AreNamesThatDifferInLetterCaseAllOverThePath) {
  EXPECT_THAT(TwinsAmong({u"/a/F.vnx", u"/a/f.vnx", u"/b/g.vnx", u"/c/G.vnx", u"/c/h.vnx"}),
              ElementsAre("warning letter-case-twins: /a/F.vnx (1), /a/f.vnx (1)",
                          "warning letter-case-twins: /b/g.vnx (2), /c/G.vnx (3)"));
}

TEST(LetterCaseTwins, AreToldOnceWithTheFirstPlaceOfEachSpelling) {
  EXPECT_THAT(TwinsAmong({u"/a/ab.vnx", u"/b/AB.vnx", u"/b/ab.vnx", u"/c/Ab.vnx", u"/c/AB.vnx"}),
              ElementsAre("warning letter-case-twins: /a/ab.vnx (1), /b/AB.vnx (2), /c/Ab.vnx (3)"));
}

TEST(LetterCaseTwins, AreNotOneNameInSeveralPlaces) {
  EXPECT_THAT(TwinsAmong({u"/a/f.vnx", u"/b/f.vnx", u"/b/+p/F.vnx", u"/b/@K/F.vnx", u"/b/private/F.vnx"}), IsEmpty());
}

TEST(LetterCaseTwins, StandInPackagesAndClassesOfOneName) {
  EXPECT_THAT(TwinsAmong({u"/a/+p/f.vnx", u"/b/+p/F.vnx", u"/a/@K/m.vnx", u"/c/@K/M.vnx", u"/a/+p/+q/f.vnx"}),
              ElementsAre("warning letter-case-twins: /a/@K/m.vnx (1), /c/@K/M.vnx (3)",
                          "warning letter-case-twins: /a/+p/f.vnx (1), /b/+p/F.vnx (2)"));
}

TEST(LetterCaseTwins, MayBePackagesAndClassesOfWhichNoneBelowIsToldForThat) {
  EXPECT_THAT(TwinsAmong({u"/a/+p/f.vnx", u"/b/+P/f.vnx", u"/a/+p/@K/m.vnx", u"/b/+P/@k/m.vnx"}),
              ElementsAre("warning letter-case-twins: /a/+p (1), /b/+P (2)",
                          "warning letter-case-twins: /a/+p/@K (1), /b/+P/@k (2)"));
}

TEST(LetterCaseTwins, MayBeAFileAndAFolder) {
  EXPECT_THAT(TwinsAmong({u"/a/@Shape/Shape.vnx", u"/b/shape.vnx"}),
              ElementsAre("warning letter-case-twins: /a/@Shape (1), /b/shape.vnx (2)"));
}

TEST(LetterCaseTwins, StandInOnePrivateFolderButNotInTwo) {
  EXPECT_THAT(TwinsAmong({u"/a/private/f.vnx", u"/b/private/F.vnx", u"/c/private/g.vnx", u"/c/private/G.vnx",
                          u"/c/@K/private/h.vnx", u"/c/@K/private/H.vnx"}),
              ElementsAre("warning letter-case-twins: /c/private/G.vnx (3), /c/private/g.vnx (3)",
                          "warning letter-case-twins: /c/@K/private/H.vnx (3), /c/@K/private/h.vnx (3)"));
}

TEST(LetterCaseTwins, ConcernFilesOfTheExtensionsTriedOnly) {
  EXPECT_THAT(TwinsAmong({u"/a/f.h", u"/b/F.hpp", u"/b/F.txt", u"/a/g.vnx", u"/b/G.vnx"}, {u".hpp", u".h"}),
              ElementsAre("warning letter-case-twins: /a/f.h (1), /b/F.hpp (2)"));
  EXPECT_THAT(TwinsAmong({u"/a/f.vnx", u"/a/f.VNX"}), IsEmpty());
}

TEST(LetterCaseTwins, FoldMoreThanAsciiLetters) {
  EXPECT_THAT(TwinsAmong({u"/a/\u00E4.vnx", u"/b/\u00C4.vnx", u"/a/stra\u00DFe.vnx", u"/b/STRASSE.vnx"}), SizeIs(2));
}

TEST(LetterCaseTwins, AreNoneWhereNoLetterCaseIsToldApart) {
  EXPECT_THAT(TwinsAmong({u"/a/f.vnx", u"/b/F.vnx"}, {u".vnx"}, NameComparison::IgnoreCase), IsEmpty());
}

TEST(LetterCaseTwins, AreToldWhereOneOfThemStandsWhereLetterCaseCounts) {
  const MemoryStorage exact = std::move(MemoryStorage(NameComparison::Exact, u"exact").WithFiles({u"/a/f.vnx"}));
  const MemoryStorage other = std::move(MemoryStorage(NameComparison::IgnoreCase, u"other").WithFiles({u"/b/F.vnx"}));

  const Examination examination(ReadPath({InMemory(u"/b", u"other"), InMemory(u"/a", u"exact")}));

  EXPECT_THAT(InWords(LetterCaseTwins(examination.Get())),
              ElementsAre("warning letter-case-twins: /b/F.vnx (1), /a/f.vnx (2)"));
}

TEST(LetterCaseTwins, AreCalledAsTheyAreTyped) {
  const MemoryStorage storage =
      std::move(MemoryStorage().WithFiles({u"/a/+p/ab.vnx", u"/a/+p/aB.vnx", u"/a/+p/AB.vnx"}));

  const auto findings = LetterCaseTwins(Examination(storage.Path({u"/a"})).Get());

  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].sentence,
            "\"p/AB\", \"p/aB\" and \"p/ab\" differ in letter case only: where that makes no difference they are one");
  EXPECT_EQ(findings[0].name, u"p/AB");
}

}  // namespace
}  // namespace vornixpath
