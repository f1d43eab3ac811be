#include "spread_folders.hpp"

#include <gmock/gmock.h>

#include <unit/environment/memory_storage.hpp>

#include "told_findings.hpp"

namespace vornixpath {
namespace {

using Quorvex::PathEnvironment::MemoryStorage;
using Quorvex::PathEnvironment::NameComparison;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> SpreadAmong(const std::vector<std::u16string>& folders,
                                     NameComparison comparison = NameComparison::Exact) {
  const MemoryStorage storage = std::move(MemoryStorage(comparison).WithFolders(folders));
  return InWords(SpreadFolders(Examination(storage.Path({u"/a", u"/b", u"/c"})).Get()));
}

TEST(SpreadFolders, ArePackagesAndClassesOfSeveralFoldersOfThePath) {
  EXPECT_THAT(SpreadAmong({u"/b/+p", u"/a/@K", u"/c/+p", u"/a/+once", u"/c/@K", u"/b/@K"}),
              ElementsAre("warning spread-class: /a/@K (1), /b/@K (2), /c/@K (3)",
                          "note spread-package: /b/+p (2), /c/+p (3)"));
}

TEST(SpreadFolders, AreToldEachByItselfWithinOneAnother) {
  EXPECT_THAT(
      SpreadAmong({u"/a/+p/@K", u"/b/+p/@K", u"/b/+p/+q"}),
      ElementsAre("note spread-package: /a/+p (1), /b/+p (2)", "warning spread-class: /a/+p/@K (1), /b/+p/@K (2)"));
}

TEST(SpreadFolders, AreNotAPackageAndAClassOfOneName) {
  EXPECT_THAT(SpreadAmong({u"/a/+p", u"/b/@p", u"/a/+x/+y", u"/b/+y", u"/c/private"}), IsEmpty());
}

TEST(SpreadFolders, GoByLetterCaseOnlyWhereThatCounts) {
  EXPECT_THAT(SpreadAmong({u"/a/+p", u"/b/+P"}), IsEmpty());
  EXPECT_THAT(SpreadAmong({u"/a/+p", u"/b/+P"}, NameComparison::IgnoreCase),
              ElementsAre("note spread-package: /a/+p (1), /b/+P (2)"));
}

TEST(SpreadFolders, AreCalledByTheirChainOfNames) {
  const MemoryStorage storage = std::move(MemoryStorage().WithFolders({u"/a/+p/@K", u"/b/+p/@K"}));

  const auto findings = SpreadFolders(Examination(storage.Path({u"/a", u"/b"})).Get());

  ASSERT_EQ(findings.size(), 2U);
  EXPECT_EQ(findings[1].sentence, "the class \"p/K\" is spread over several folders of the path");
  EXPECT_EQ(findings[1].name, u"p/K");
}

}  // namespace
}  // namespace vornixpath
