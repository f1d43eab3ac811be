#include "shadow.hpp"

#include <gmock/gmock.h>

#include <unit/environment/memory_storage.hpp>

#include "shadow_finding.hpp"

namespace vornixpath {
namespace {

using Quorvex::PathEnvironment::MemoryStorage;
using Quorvex::PathEnvironment::NameComparison;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

std::vector<std::string> HiddenAmong(const std::vector<std::u16string>& files,
                                     const std::vector<std::u16string>& folders = {u"/a", u"/b", u"/c"},
                                     const std::vector<std::u16string>& extensions = {u".vnx"},
                                     NameComparison comparison = NameComparison::Exact) {
  const MemoryStorage storage = std::move(MemoryStorage(comparison).WithFolders(folders).WithFiles(files));
  return Hidden(*storage.Path(folders), extensions);
}

TEST(Shadows, AreTheFilesOfLaterFoldersInPathOrder) {
  EXPECT_THAT(HiddenAmong({u"/b/f.vnx", u"/c/f.vnx", u"/a/f.vnx", u"/a/only.vnx"}),
              ElementsAre("f: /a/f.vnx hides /b/f.vnx", "f: /a/f.vnx hides /c/f.vnx"));
}

TEST(Shadows, AreNoneWhereEachNameIsOfferedOnce) {
  EXPECT_THAT(HiddenAmong({u"/a/f.vnx", u"/b/g.vnx", u"/b/f.txt", u"/c/+p/f.vnx", u"/c/@K/f.vnx"}), IsEmpty());
}

TEST(Shadows, ConcernFilesOfTheExtensionsTriedOnly) {
  EXPECT_THAT(HiddenAmong({u"/a/f.h", u"/b/f.hpp", u"/b/f.vnx", u"/c/f.vnx"}, {u"/a", u"/b", u"/c"}, {u".hpp", u".h"}),
              ElementsAre("f: /a/f.h hides /b/f.hpp"));
}

TEST(Shadows, HaveNamesThatMayBeginWithADot) {
  EXPECT_THAT(HiddenAmong({u"/a/.h.vnx", u"/b/.h", u"/b/..vnx", u"/c/..vnx"}, {u"/a", u"/b", u"/c"}, {u".vnx", u""}),
              UnorderedElementsAre(".h: /a/.h.vnx hides /b/.h", "..vnx: /b/..vnx hides /c/..vnx"));
  EXPECT_THAT(HiddenAmong({u"/a/.h.x", u"/b/.h.y"}, {u"/a", u"/b"}, {u".x", u".y"}),
              ElementsAre(".h: /a/.h.x hides /b/.h.y"));
}

TEST(Shadows, AreNotTheFolderOfTheFileThatANameMeans) {
  EXPECT_THAT(HiddenAmong({u"/n/@K/K.vnx"}, {u"/n/@K", u"/n"}), IsEmpty());
}

TEST(Shadows, AreNotWhatOneFolderHoldsUnderTwoExtensions) {
  EXPECT_THAT(HiddenAmong({u"/a/f.h", u"/a/f.hpp"}, {u"/a"}, {u".hpp", u".h"}), IsEmpty());
}

TEST(Shadows, ConcernFilesWithoutExtensionWhenNoneIsTried) {
  EXPECT_THAT(HiddenAmong({u"/a/f", u"/b/f", u"/a/g.vnx", u"/b/g.vnx"}, {u"/a", u"/b"}, {u""}),
              ElementsAre("f: /a/f hides /b/f"));
}

TEST(Shadows, NameAFileWithADotByItsExtensionToo) {
  EXPECT_THAT(HiddenAmong({u"/a/x.y.vnx", u"/b/x.y.vnx"}), ElementsAre("x.y.vnx: /a/x.y.vnx hides /b/x.y.vnx"));
}

TEST(Shadows, TakeAnExtensionOfSeveralDotsForOne) {
  EXPECT_THAT(HiddenAmong({u"/a/x.tar.vnx", u"/b/x.tar.vnx"}, {u"/a", u"/b"}, {u".tar.vnx"}),
              ElementsAre("x: /a/x.tar.vnx hides /b/x.tar.vnx"));
}

TEST(Shadows, AreInPackagesAndClassesByTheirChainsWithoutMarks) {
  EXPECT_THAT(HiddenAmong({u"/a/+p/f.vnx", u"/b/+p/f.vnx", u"/a/+p/@K/m.vnx", u"/b/+p/@K/m.vnx", u"/a/@S/m.vnx",
                           u"/b/@S/m.vnx", u"/a/+p/+q/g.vnx", u"/b/+p/+q/g.vnx"}),
              UnorderedElementsAre("p/f: /a/+p/f.vnx hides /b/+p/f.vnx", "p/K/m: /a/+p/@K/m.vnx hides /b/+p/@K/m.vnx",
                                   "S/m: /a/@S/m.vnx hides /b/@S/m.vnx", "p/q/g: /a/+p/+q/g.vnx hides /b/+p/+q/g.vnx"));
}

TEST(Shadows, AreNotThePackagesThemselves) {
  EXPECT_THAT(HiddenAmong({u"/a/+p/f.vnx", u"/b/+p/g.vnx", u"/a/@K/f.vnx", u"/b/@K/g.vnx"}), IsEmpty());
}

TEST(Shadows, LetTheFileOfAClassCompeteUnderTheNameOfTheClass) {
  EXPECT_THAT(HiddenAmong({u"/a/@K/K.vnx", u"/b/@K/K.vnx"}), ElementsAre("K: /a/@K/K.vnx hides /b/@K/K.vnx"));
}

TEST(Shadows, AreOfAnotherKindBetweenAPlainFileAndThatOfAClass) {
  EXPECT_THAT(HiddenAmong({u"/a/@K/K.vnx", u"/b/K.vnx"}), ElementsAre("K: /a/@K/K.vnx hides /b/K.vnx (kind)"));
  EXPECT_THAT(HiddenAmong({u"/a/K.vnx", u"/b/@K/K.vnx"}), ElementsAre("K: /a/K.vnx hides /b/@K/K.vnx (kind)"));
  EXPECT_THAT(HiddenAmong({u"/a/K.vnx", u"/a/@K/K.vnx"}), ElementsAre("K: /a/K.vnx hides /a/@K/K.vnx (kind)"));
}

TEST(Shadows, AreOfAnotherKindBetweenAPlainFileAndASpecialFolderOfItsName) {
  EXPECT_THAT(HiddenAmong({u"/b/K.vnx", u"/a/@K/m.vnx"}), ElementsAre("K: /b/K.vnx hides /a/@K (kind)"));
  EXPECT_THAT(HiddenAmong({u"/a/p.vnx", u"/b/+p/f.vnx", u"/c/+p/g.vnx"}),
              ElementsAre("p: /a/p.vnx hides /b/+p (kind)", "p: /a/p.vnx hides /c/+p (kind)"));
  EXPECT_THAT(HiddenAmong({u"/a/+p/K.vnx", u"/b/+p/@K/K.vnx"}), ElementsAre("p/K: /a/+p/K.vnx hides /b/+p/@K (kind)"));
}

TEST(Shadows, DoNotTellOfAClassThatOnlyAddsMethods) {
  EXPECT_THAT(HiddenAmong({u"/a/@K/K.vnx", u"/b/@K/m.vnx"}), IsEmpty());
}

TEST(Shadows, LeaveOutPrivateAndResourcesFolders) {
  EXPECT_THAT(HiddenAmong({u"/a/private/f.vnx", u"/b/private/f.vnx", u"/a/resources/g.vnx", u"/b/g.vnx", u"/b/f.vnx",
                           u"/a/@K/private/m.vnx", u"/b/@K/private/m.vnx"}),
              IsEmpty());
}

TEST(Shadows, CountAFolderOfThePathThatALookupTakesForAPackage) {
  EXPECT_THAT(HiddenAmong({u"/x/p/f.vnx", u"/b/+p/f.vnx"}, {u"/x/p", u"/b"}),
              ElementsAre("p/f: /x/p/f.vnx hides /b/+p/f.vnx (kind)"));
}

TEST(Shadows, AreInLetterCaseAloneWhereEachIsFoundOnItsOwn) {
  EXPECT_THAT(HiddenAmong({u"/a/greet.vnx", u"/b/Greet.vnx"}),
              ElementsAre("greet: /a/greet.vnx hides /b/Greet.vnx (letter case)"));
  EXPECT_THAT(HiddenAmong({u"/b/stra\u00DFe.vnx", u"/a/STRASSE.vnx"}),
              ElementsAre("STRASSE: /a/STRASSE.vnx hides /b/stra\u00DFe.vnx (letter case)"));
  EXPECT_THAT(HiddenAmong({u"/a/+p/f.vnx", u"/b/+P/f.vnx"}),
              ElementsAre("p/f: /a/+p/f.vnx hides /b/+P/f.vnx (letter case)"));
}

TEST(Shadows, AreInLetterCaseAloneAlsoWithinOneFolder) {
  EXPECT_THAT(HiddenAmong({u"/a/greet.vnx", u"/a/Greet.vnx"}, {u"/a"}),
              ElementsAre("Greet: /a/Greet.vnx hides /a/greet.vnx (letter case)"));
}

TEST(Shadows, TellOfAFolderThatDiffersInLetterCaseFromAFile) {
  EXPECT_THAT(HiddenAmong({u"/a/shape.vnx", u"/b/+Shape/f.vnx"}),
              ElementsAre("shape: /a/shape.vnx hides /b/+Shape (letter case)"));
}

TEST(Shadows, AreOrdinaryWhereLetterCaseMakesNoDifference) {
  EXPECT_THAT(HiddenAmong({u"/a/greet.vnx", u"/b/Greet.VNX"}, {u"/a", u"/b"}, {u".vnx"}, NameComparison::IgnoreCase),
              ElementsAre("greet: /a/greet.vnx hides /b/Greet.VNX"));
  EXPECT_THAT(HiddenAmong({u"/a/+p/f.vnx", u"/b/P.vnx"}, {u"/a", u"/b"}, {u".vnx"}, NameComparison::IgnoreCase),
              ElementsAre("P: /b/P.vnx hides /a/+p (kind)"));
}

TEST(Shadows, TellALocationOnceThoughItStandsOnThePathTwice) {
  EXPECT_THAT(HiddenAmong({u"/a/@K/m.vnx"}, {u"/a", u"/a/@K"}), IsEmpty());
}

}  // namespace
}  // namespace vornixpath
