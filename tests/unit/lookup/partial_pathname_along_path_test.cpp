// Whether folder names name the place of an entry on a path: entry by entry, then by where the main entry stands.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <search_path_utilities/lookup.hpp>
#include <string>
#include <string_view>
#include <support/fake_path.hpp>
#include <utility>
#include <vector>

namespace Quorvex::PathManagement {
namespace {

using support::APath;
using support::CallLog;
using support::FakePath;
using support::Folder;
using support::InjectedFailure;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::Pair;

using Names = std::vector<std::u16string>;

/// Packages, a class and a private folder below /x/main, and a class that stands in no package.
APath APathOfSpecialFolders() {
  return APath().With(
      Folder("/x/main")
          .WithPackage(Folder("outer").WithPackage(Folder("pkg").WithClass(Folder("Cls").With(Folder("private")))))
          .WithClass(Folder("Free").With(Folder("private"))));
}

bool MatchesOn(const FakePath& path, const Names& partial, std::string_view entry,
               FilenameMatchingPolicy policy = FilenameMatchingPolicy::Native) {
  return DoesPartialPathnameMatchPathEntryIRI(path, partial, path.EntryAt(entry), policy);
}

class PartialPathnameAlongPath : public testing::Test {
 protected:
  bool Matches(const Names& partial, std::string_view entry,
               FilenameMatchingPolicy policy = FilenameMatchingPolicy::CaseSensitive) const {
    return MatchesOn(*path_, partial, entry, policy);
  }

  std::shared_ptr<const FakePath> path_ = APathOfSpecialFolders().Build();
};

TEST_F(PartialPathnameAlongPath, MatchesWhenEveryPackageAboveIsNamed) {
  EXPECT_TRUE(Matches({u"outer", u"pkg", u"Cls"}, "/x/main/+outer/+pkg/@Cls"));
  EXPECT_TRUE(Matches({u"+outer", u"+pkg", u"@Cls"}, "/x/main/+outer/+pkg/@Cls"));
  EXPECT_TRUE(Matches({u"Free"}, "/x/main/@Free"));
}

TEST_F(PartialPathnameAlongPath, DoesNotMatchBelowAPackageThatIsNotNamed) {
  EXPECT_FALSE(Matches({u"Cls"}, "/x/main/+outer/+pkg/@Cls"));
  EXPECT_FALSE(Matches({u"pkg", u"Cls"}, "/x/main/+outer/+pkg/@Cls"));
  EXPECT_FALSE(Matches({u"private"}, "/x/main/+outer/+pkg/@Cls/private"));
}

TEST_F(PartialPathnameAlongPath, MayLeaveEnclosingClassFoldersOut) {
  EXPECT_TRUE(Matches({u"private"}, "/x/main/@Free/private"));
}

TEST_F(PartialPathnameAlongPath, DoesNotMatchAtAnotherName) {
  EXPECT_FALSE(Matches({u"outer", u"pkg", u"Other"}, "/x/main/+outer/+pkg/@Cls"));
  EXPECT_FALSE(Matches({u"other", u"pkg", u"Cls"}, "/x/main/+outer/+pkg/@Cls"));
  EXPECT_FALSE(Matches({u"outer", u"Cls"}, "/x/main/+outer/+pkg/@Cls"));
}

TEST_F(PartialPathnameAlongPath, WithoutNamesAsksOnlyWhetherAPackageIsAtOrAboveTheEntry) {
  EXPECT_TRUE(Matches({}, "/x/main"));
  EXPECT_TRUE(Matches({}, "/x/main/@Free/private"));
  EXPECT_FALSE(Matches({}, "/x/main/+outer"));
  EXPECT_FALSE(Matches({}, "/x/main/+outer/+pkg/@Cls/private"));
}

TEST_F(PartialPathnameAlongPath, GoesOnFromTheMainEntryByTheFoldersAroundIt) {
  EXPECT_TRUE(Matches({u"main"}, "/x/main"));
  EXPECT_TRUE(Matches({u"x", u"main"}, "/x/main"));
  EXPECT_TRUE(Matches({u"x", u"main", u"Free"}, "/x/main/@Free"));
  EXPECT_FALSE(Matches({u"y", u"main", u"Free"}, "/x/main/@Free"));
  EXPECT_FALSE(Matches({u"w", u"x", u"main"}, "/x/main"));
}

TEST_F(PartialPathnameAlongPath, DoesNotCareForPackagesAroundTheMainEntryUnlikeTheFormWithoutAPath) {
  const auto path = APath().With(Folder("/x/+pkg/main")).Build();
  const Names partial = {u"main"};
  const auto entry = path->EntryAt("/x/+pkg/main");

  EXPECT_TRUE(DoesPartialPathnameMatchPathEntryIRI(*path, partial, entry, FilenameMatchingPolicy::Native));
  EXPECT_FALSE(DoesPartialPathnameMatchPathEntryIRI(partial, entry, FilenameMatchingPolicy::Native));
}

TEST_F(PartialPathnameAlongPath, WantsTheMarksOfTheFoldersAroundTheMainEntryItsOwnIncluded) {
  const auto path = APath().With(Folder("/+pkg/@main")).Build();
  const auto matches = [&](const Names& partial) { return MatchesOn(*path, partial, "/+pkg/@main"); };

  EXPECT_TRUE(matches({u"@main"}));
  EXPECT_FALSE(matches({u"main"})) << "it matched without its mark, and does not when it is compared again";
  EXPECT_TRUE(matches({u"+pkg", u"@main"}));
  EXPECT_FALSE(matches({u"pkg", u"@main"}));
}

TEST_F(PartialPathnameAlongPath, ReadsTheMainEntrysPlaceWhateverItsScheme) {
  const auto path = APath().Under(u"memory").With(Folder("/x/main")).Build();
  const auto matches = [&](const Names& partial) { return MatchesOn(*path, partial, "/x/main"); };

  EXPECT_TRUE(matches({u"x", u"main"}));
  EXPECT_FALSE(matches({u"memory:", u"x", u"main"})) << "the place is a path, not the identifier's text";
}

TEST_F(PartialPathnameAlongPath, ComparesLetterCaseAsTheEntriesDoUnderThePolicy) {
  EXPECT_FALSE(Matches({u"X", u"Main", u"free"}, "/x/main/@Free", FilenameMatchingPolicy::CaseSensitive));
  EXPECT_TRUE(Matches({u"X", u"Main", u"free"}, "/x/main/@Free", FilenameMatchingPolicy::CaseInsensitive));
}

TEST_F(PartialPathnameAlongPath, ComparesTheWantedNameFirstButTheFolderFirstAroundTheMainEntry) {
  std::vector<std::pair<std::u16string, std::u16string>> asked;
  const auto path = APath()
                        .Comparing(std::make_shared<const FilenameComparator>(
                            [&](const std::u16string& left, const std::u16string& right) {
                              asked.emplace_back(left, right);
                              return left.size() == right.size();
                            }))
                        .With(Folder("/x/main").WithClass(Folder("Free")))
                        .Build();

  EXPECT_TRUE(MatchesOn(*path, {u"y", u"mean", u"Fred"}, "/x/main/@Free"));
  EXPECT_THAT(asked, ElementsAre(Pair(u"Fred", u"@Free"), Pair(u"Fred", u"Free"), Pair(u"mean", u"main"),
                                 Pair(u"main", u"mean"), Pair(u"x", u"y")));
}

TEST_F(PartialPathnameAlongPath, AsksThePathForParentsAndEachEntryForItsOwnComparator) {
  const auto log = std::make_shared<CallLog>();
  const auto path = APath().Recording("path", log).With(Folder("/a").WithClass(Folder("C"))).Build();

  EXPECT_TRUE(MatchesOn(*path, {u"a", u"C"}, "/a/@C", FilenameMatchingPolicy::CaseInsensitive));

  EXPECT_THAT(log->GetOperations(), ElementsAre("/a/@C GetFilenameComparator", "path.GetParentEntryForEntry",
                                                "/a GetFilenameComparator", "path.GetParentEntryForEntry"));
  EXPECT_EQ(log->GetCalls()[0].policy, FilenameMatchingPolicy::CaseInsensitive);
}

TEST_F(PartialPathnameAlongPath, ComparesNothingWhenThereAreNoNames) {
  const auto log = std::make_shared<CallLog>();
  const auto path = APath().Recording("path", log).With(Folder("/a").WithClass(Folder("C"))).Build();

  EXPECT_TRUE(MatchesOn(*path, Names{}, "/a/@C", FilenameMatchingPolicy::CaseInsensitive));
  EXPECT_THAT(log->GetOperations(), Not(Contains(HasSubstr("GetFilenameComparator"))));
}

TEST_F(PartialPathnameAlongPath, FailsWhenAnEntryHasNoComparator) {
  const auto path = APath().Comparing(nullptr).With(Folder("/a")).Build();

  EXPECT_THROW(MatchesOn(*path, {u"a"}, "/a"), std::bad_function_call);
}

TEST_F(PartialPathnameAlongPath, LetsFailuresOfThePathPass) {
  const auto log = std::make_shared<CallLog>();
  const auto path = APath().Recording("path", log).With(Folder("/a")).Build();
  log->FailNext("path.GetParentEntryForEntry");

  EXPECT_THROW(MatchesOn(*path, {u"a"}, "/a"), InjectedFailure);
}

}  // namespace
}  // namespace Quorvex::PathManagement
