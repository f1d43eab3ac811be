#include "changed_names.hpp"

#include <gmock/gmock.h>

#include <unit/environment/memory_storage.hpp>

#include "read_after.hpp"

namespace vornixpath {
namespace {

using Quorvex::PathEnvironment::MemoryStorage;
using Quorvex::PathManagement::ComparisonFilter;
using testing::ElementsAre;
using testing::IsEmpty;

// What changes when the path goes from one list of folders to another.
std::vector<std::string> Changed(const MemoryStorage& storage, const std::vector<std::u16string>& before,
                                 const std::vector<std::u16string>& after) {
  const auto oldPath = storage.Path(before);
  const auto newPath = ReadAfter(*oldPath, after);
  std::vector<std::string> texts;
  for (const ChangedName& name : ChangedNames(
           *oldPath, *newPath, ChangesBetween(*oldPath, *newPath, ComparisonFilter::MainEntriesOnly), {u".vnx"})) {
    texts.push_back(InWords(name));
  }
  return texts;
}

TEST(ChangedNames, TellWhatAnAddedFolderHidesAndOffers) {
  const MemoryStorage storage =
      std::move(MemoryStorage().WithFiles({u"/old/greet.vnx", u"/new/greet.vnx", u"/new/report.vnx"}));

  EXPECT_THAT(Changed(storage, {u"/old"}, {u"/new", u"/old"}),
              ElementsAre("greet: memory:///old/greet.vnx -> memory:///new/greet.vnx",
                          "report: nothing -> memory:///new/report.vnx"));
  EXPECT_THAT(Changed(storage, {u"/old"}, {u"/old", u"/new"}),
              ElementsAre("report: nothing -> memory:///new/report.vnx"));
}

TEST(ChangedNames, TellWhatARemovedFolderUncoversAndTakesAway) {
  const MemoryStorage storage =
      std::move(MemoryStorage().WithFiles({u"/a/greet.vnx", u"/a/only.vnx", u"/b/greet.vnx"}));

  EXPECT_THAT(
      Changed(storage, {u"/a", u"/b"}, {u"/b"}),
      ElementsAre("greet: memory:///a/greet.vnx -> memory:///b/greet.vnx", "only: memory:///a/only.vnx -> nothing"));
}

TEST(ChangedNames, TellWhatAMoveTurnsRound) {
  const MemoryStorage storage =
      std::move(MemoryStorage().WithFiles({u"/a/greet.vnx", u"/a/only.vnx", u"/b/greet.vnx"}));

  EXPECT_THAT(Changed(storage, {u"/a", u"/b"}, {u"/b", u"/a"}),
              ElementsAre("greet: memory:///a/greet.vnx -> memory:///b/greet.vnx"));
}

TEST(ChangedNames, CountPackagesByQualifiedNamesAndClassesByTheirOwnAndTheirMethodsBehindIt) {
  const MemoryStorage storage = std::move(MemoryStorage().WithFiles(
      {u"/new/+p/f.vnx", u"/new/+p/+q/g.vnx", u"/new/+p/@C/C.vnx", u"/new/@D/D.vnx", u"/new/@D/method.vnx"}));

  EXPECT_THAT(Changed(storage, {}, {u"/new"}), ElementsAre("D: nothing -> memory:///new/@D/D.vnx",              //
                                                           "D/method: nothing -> memory:///new/@D/method.vnx",  //
                                                           "p/C/C: nothing -> memory:///new/+p/@C/C.vnx",       //
                                                           "p/f: nothing -> memory:///new/+p/f.vnx",            //
                                                           "p/q/g: nothing -> memory:///new/+p/+q/g.vnx"));
}

TEST(ChangedNames, LeaveOutPrivateFilesResourcesOtherExtensionsAndPlainSubfolders) {
  const MemoryStorage storage = std::move(MemoryStorage().WithFiles(
      {u"/new/private/f.vnx", u"/new/resources/g.vnx", u"/new/notes.txt", u"/new/sub/h.vnx"}));

  EXPECT_THAT(Changed(storage, {}, {u"/new"}), IsEmpty());
}

TEST(ChangedNames, NameAFileWithADotByItsExtensionToo) {
  const MemoryStorage storage = std::move(MemoryStorage().WithFiles({u"/new/a.b.vnx"}));

  EXPECT_THAT(Changed(storage, {}, {u"/new"}), ElementsAre("a.b.vnx: nothing -> memory:///new/a.b.vnx"));
}

TEST(ChangedNames, CountNamesThatBeginWithADot) {
  const MemoryStorage storage = std::move(MemoryStorage().WithFiles({u"/a/@.h/.h.vnx", u"/a/@.h/m.vnx", u"/b/.h.vnx"}));

  EXPECT_THAT(Changed(storage, {u"/b"}, {u"/a", u"/b"}), ElementsAre(".h: memory:///b/.h.vnx -> memory:///a/@.h/.h.vnx",
                                                                     ".h/m: nothing -> memory:///a/@.h/m.vnx"));
}

TEST(ChangedNames, AreNoneWhereAFolderHoldsNothingThatIsVisible) {
  const MemoryStorage storage = std::move(MemoryStorage().WithFiles({u"/a/f.vnx", u"/b/f.vnx"}));

  EXPECT_THAT(Changed(storage, {u"/a"}, {u"/a", u"/b"}), IsEmpty());
  EXPECT_THAT(Changed(storage, {u"/a", u"/missing"}, {u"/a"}), IsEmpty());
}

}  // namespace
}  // namespace vornixpath
