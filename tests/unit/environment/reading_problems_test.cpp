#include <gmock/gmock.h>

#include <fakes/failing_storage_provider.hpp>
#include <system_error>

#include "memory_storage.hpp"
#include "shown.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using foundation::storage::fakes::FailingStorageProvider;
using foundation::storage::fakes::Persistence;
using foundation::storage::fakes::StorageOperation;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

std::error_code Error(std::errc error) { return std::make_error_code(error); }

Texts FirstOf(const FolderPath& path, const std::u16string& name) {
  return AllShown(path.FindAllInScope(kEveryKind, Exactly(name).Target(), kNative));
}

TEST(ReadingProblems, AreNoneForAPathInOrder) {
  MemoryStorage storage;
  storage.WithFiles({u"/a/f", u"/a/+p/@c/private/f", u"/b/resources/f"});

  EXPECT_THAT(AllShown(storage.Path({u"/a", u"/b"})->GetProblems()), IsEmpty());
}

TEST(ReadingProblems, KeepAMissingFolderAsAnEntryWithoutItems) {
  MemoryStorage storage;
  storage.WithFiles({u"/a/f", u"/c/f"});

  const auto path = storage.Path({u"/a", u"/b", u"/c"});

  ASSERT_THAT(AllShown(*path->GetMainEntries()), ElementsAre("/a", "/b", "/c"));
  EXPECT_THAT(*path->GetMainEntries()->at(1)->GetItems(), IsEmpty());
  EXPECT_THAT(AllShown(path->GetProblems()), ElementsAre("1 /b: there is no such folder"));
  EXPECT_EQ(path->GetProblems()[0].kind, ProblemKind::Missing);
  EXPECT_EQ(path->GetProblems()[0].error, Error(std::errc::no_such_file_or_directory));
  EXPECT_THAT(FirstOf(*path, u"f"), ElementsAre("/a: f", "/c: f"));
}

TEST(ReadingProblems, TellAFileFromAFolder) {
  MemoryStorage storage;
  storage.WithFiles({u"/a", u"/b/f"});

  const auto path = storage.Path({u"/a", u"/b", u"/a/below"});

  EXPECT_THAT(AllShown(path->GetProblems()), ElementsAre("0 /a: it is not a folder", "2 /a/below: it is not a folder"));
  EXPECT_EQ(path->GetProblems()[0].kind, ProblemKind::NotAFolder);
  EXPECT_THAT(FirstOf(*path, u"f"), ElementsAre("/b: f"));
}

TEST(ReadingProblems, NameALocationThatNoStorageServes) {
  MemoryStorage storage;
  storage.WithFiles({u"/a/f"});

  const auto path = ReadPath({AbsoluteIRI(u"nobody://host/x"), InMemory(u"/a"), AbsoluteIRI(u"memory:rootless")});

  ASSERT_THAT(path->GetProblems(), SizeIs(2));
  EXPECT_EQ(path->GetProblems()[0].location, AbsoluteIRI(u"nobody://host/x"));
  EXPECT_EQ(path->GetProblems()[0].kind, ProblemKind::Unreadable);
  EXPECT_TRUE(path->GetProblems()[0].error);
  EXPECT_EQ(path->GetProblems()[1].location, AbsoluteIRI(u"memory:rootless"));
  EXPECT_EQ(path->GetProblems()[1].position, 2U);
  EXPECT_EQ(path->GetProblems()[1].error, Error(std::errc::invalid_argument));
  EXPECT_THAT(FirstOf(*path, u"f"), ElementsAre("/a: f"));
}

// A location of files that is no path of this system has no text to match a partial pathname with.
TEST(ReadingProblems, LeavePartialPathnamesWorkingBesideALocationThatIsNoPath) {
  MemoryStorage storage;
  storage.WithFolders({u"/a"});

  const auto path = ReadPath({AbsoluteIRI(u"file://some.host/a"), AbsoluteIRI(u"file:///x%2Fy/a"), InMemory(u"/a")});

  EXPECT_THAT(path->GetProblems(), SizeIs(2));
  EXPECT_THAT(path->GetPartiallyMatchingEntries(kEveryKind, u"a", kNative), ElementsAre(path->GetMainEntries()->at(2)));
}

struct Refusal {
  std::errc error;
  std::string reason;
};

class ReadingProblemsOfOneFolder : public testing::TestWithParam<Refusal> {
 protected:
  ReadingProblemsOfOneFolder() {
    storage_.WithFiles({u"/a/f", u"/b/f", u"/b/@c/f", u"/b/+p/f", u"/b/+p/private/f", u"/c/f"});
    failing_ = storage_.Through<FailingStorageProvider>();
  }

  void Refuse(StorageOperation operation, const std::u16string& folder) {
    failing_->Plan({operation, InMemory(folder), 1, Error(GetParam().error), Persistence::Persistent});
  }

  [[nodiscard]] std::shared_ptr<const FolderPath> Path() const { return storage_.Path({u"/a", u"/b", u"/c"}); }

  static void ExpectTheRefusal(const FolderPath& path, const std::string& folder) {
    EXPECT_THAT(AllShown(path.GetProblems()), ElementsAre(HasSubstr("1 " + folder + ": " + GetParam().reason)));
    ASSERT_THAT(path.GetProblems(), SizeIs(1));
    EXPECT_EQ(path.GetProblems()[0].kind, ProblemKind::Unreadable);
    EXPECT_EQ(path.GetProblems()[0].error, Error(GetParam().error));
  }

  MemoryStorage storage_;
  std::shared_ptr<FailingStorageProvider> failing_;
};

TEST_P(ReadingProblemsOfOneFolder, EmptyAMainFolderThatCannotBeListedAndSpoilNoOther) {
  Refuse(StorageOperation::List, u"/b");

  const auto path = Path();

  ExpectTheRefusal(*path, "/b");
  EXPECT_THAT(AllShown(*path->GetMainEntries()), ElementsAre("/a", "/b", "/c"));
  EXPECT_THAT(FirstOf(*path, u"f"), ElementsAre("/a: f", "/c: f"));
}

TEST_P(ReadingProblemsOfOneFolder, EmptyASubfolderThatCannotBeListedAndSpoilNoOther) {
  Refuse(StorageOperation::List, u"/b/+p");

  const auto path = Path();

  ExpectTheRefusal(*path, "/b/+p");
  EXPECT_THAT(Walk(*path), ElementsAre("/a", "/b", "/b/@c", "/b/+p", "/c"));
  EXPECT_THAT(FirstOf(*path, u"f"), ElementsAre("/a: f", "/b: f", "/b/@c: f", "/c: f"));
}

TEST_P(ReadingProblemsOfOneFolder, KeepTheItemsOfAFolderWhoseCanonicalPlaceStaysUnknown) {
  Refuse(StorageOperation::CanonicalLocation, u"/b/+p");

  const auto path = Path();

  ExpectTheRefusal(*path, "/b/+p");
  EXPECT_THAT(FirstOf(*path, u"f"), ElementsAre("/a: f", "/b: f", "/b/@c: f", "/b/+p: f", "/b/+p/private: f", "/c: f"));
  EXPECT_EQ(Shown(path->GetPathEntryFromAbsoluteIRI(InMemory(u"/b/+p"), kNative)), "/b/+p");
}

TEST_P(ReadingProblemsOfOneFolder, TellLetterCasesApartWhereStorageDoesNotSay) {
  Refuse(StorageOperation::ComparesNamesExactly, u"/b");

  const auto path = Path();

  ExpectTheRefusal(*path, "/b");
  EXPECT_THAT(FirstOf(*path, u"f"), ElementsAre("/a: f", "/b: f", "/b/@c: f", "/b/+p: f", "/b/+p/private: f", "/c: f"));
  EXPECT_THAT(FirstOf(*path, u"F"), IsEmpty());
}

TEST_P(ReadingProblemsOfOneFolder, AreReportedOnceWhenEveryQuestionFailsAlike) {
  Refuse(StorageOperation::CanonicalLocation, u"/b");
  Refuse(StorageOperation::List, u"/b");

  const auto path = Path();

  ExpectTheRefusal(*path, "/b");
}

INSTANTIATE_TEST_SUITE_P(ForEachError, ReadingProblemsOfOneFolder,
                         testing::Values(Refusal{std::errc::permission_denied, "it cannot be read: Permission denied"},
                                         Refusal{std::errc::io_error, "it cannot be read: Input/output error"}),
                         [](const testing::TestParamInfo<Refusal>& param) {
                           return param.param.error == std::errc::io_error ? "BrokenDevice" : "Refused";
                         });

TEST(ReadingProblems, ReportASubfolderThatVanishesAfterItWasListed) {
  MemoryStorage storage;
  storage.WithFiles({u"/m/+gone/f", u"/m/+stays/f"});
  const auto failing = storage.Through<FailingStorageProvider>();
  failing->Plan({StorageOperation::List, InMemory(u"/m/+gone"), 1, Error(std::errc::no_such_file_or_directory),
                 Persistence::Persistent});

  const auto path = storage.Path({u"/m"});

  EXPECT_THAT(AllShown(path->GetProblems()), ElementsAre("0 /m/+gone: there is no such folder"));
  EXPECT_THAT(FirstOf(*path, u"f"), ElementsAre("/m/+stays: f"));
}

TEST(ReadingProblems, ReportAFolderThatBecomesAFileAfterItWasListed) {
  MemoryStorage storage;
  storage.WithFiles({u"/m/private/f", u"/m/f"});
  const auto failing = storage.Through<FailingStorageProvider>();
  failing->Plan(
      {StorageOperation::List, InMemory(u"/m/private"), 1, Error(std::errc::not_a_directory), Persistence::Persistent});

  const auto path = storage.Path({u"/m"});

  EXPECT_THAT(AllShown(path->GetProblems()), ElementsAre("0 /m/private: it is not a folder"));
  EXPECT_THAT(FirstOf(*path, u"f"), ElementsAre("/m: f"));
}

// A storage that cannot tell what one of the names in a folder is.
class HalfBlindStorage : public foundation::storage::fakes::ForwardingStorageProvider {
 public:
  using ForwardingStorageProvider::ForwardingStorageProvider;

  [[nodiscard]] foundation::storage::vfs::FolderListing List(const AbsoluteIRI& folder) const override {
    auto listing = ForwardingStorageProvider::List(folder);
    listing.problems.push_back({u"+later", Error(std::errc::io_error)});
    listing.problems.push_back({u"+blocked", Error(std::errc::permission_denied)});
    return listing;
  }
};

TEST(ReadingProblems, NameALinkThatCannotBeFollowedAndKeepTheRestOfTheFolder) {
  MemoryStorage storage;
  storage.WithFiles({u"/m/f"});
  storage.Through<HalfBlindStorage>();

  const auto path = storage.Path({u"/m"});

  EXPECT_THAT(AllShown(path->GetProblems()), ElementsAre("0 /m/+blocked: it cannot be read: Permission denied",
                                                         "0 /m/+later: it cannot be read: Input/output error"));
  EXPECT_THAT(FirstOf(*path, u"f"), ElementsAre("/m: f"));
}

// A storage that lists names which no identifier can hold.
class IllSpeltStorage : public foundation::storage::fakes::ForwardingStorageProvider {
 public:
  using ForwardingStorageProvider::ForwardingStorageProvider;

  [[nodiscard]] foundation::storage::vfs::FolderListing List(const AbsoluteIRI& folder) const override {
    using foundation::storage::vfs::FileKind;
    auto listing = ForwardingStorageProvider::List(folder);
    listing.entries.insert(listing.entries.begin(), {{u"+a/b", FileKind::Folder}, {u"@\xD800", FileKind::Folder}});
    return listing;
  }
};

TEST(ReadingProblems, KeepWhatAFolderHoldsBesideANameThatNoLocationCanHave) {
  MemoryStorage storage;
  storage.WithFiles({u"/m/f", u"/m/+p/f", u"/m/private/f"});
  storage.Through<IllSpeltStorage>();

  const auto path = storage.Path({u"/m"});

  EXPECT_THAT(FirstOf(*path, u"f"), ElementsAre("/m: f", "/m/private: f", "/m/+p: f"));
  ASSERT_THAT(path->GetProblems(), SizeIs(testing::Ge(1U)));
  EXPECT_EQ(path->GetProblems()[0].location, InMemory(u"/m"));
  EXPECT_EQ(path->GetProblems()[0].error, Error(std::errc::invalid_argument));
}

TEST(ReadingProblems, LeaveOutASubfolderThatLeadsBackToItsOwnBranch) {
  MemoryStorage storage;
  storage.WithFiles({u"/m/f"}).WithLink(u"/m/+a", u"/m");

  const auto path = storage.Path({u"/m"});

  EXPECT_THAT(Walk(*path), ElementsAre("/m"));
  EXPECT_THAT(AllShown(path->GetProblems()), ElementsAre("0 /m/+a: it leads back to a folder that encloses it"));
  EXPECT_EQ(path->GetProblems()[0].kind, ProblemKind::Loop);
}

TEST(ReadingProblems, ReadAFolderInWhichALinkLeadsBackToAPackageJustAsFarAsItIsNew) {
  MemoryStorage storage;
  storage.WithFiles({u"/m/+a/f"}).WithLink(u"/m/+a/+b", u"/m/+a");

  const auto path = storage.Path({u"/m"});

  EXPECT_THAT(Walk(*path), ElementsAre("/m", "/m/+a"));
  EXPECT_THAT(AllShown(path->GetProblems()), ElementsAre("0 /m/+a/+b: it leads back to a folder that encloses it"));
}

TEST(ReadingProblems, EndThoughTwoLinksOfAFolderLeadBackToIt) {
  MemoryStorage storage;
  storage.WithFiles({u"/m/f"}).WithLink(u"/m/+a", u"/m").WithLink(u"/m/+b", u"/m");

  const auto path = storage.Path({u"/m"});

  EXPECT_THAT(Walk(*path), ElementsAre("/m"));
  EXPECT_THAT(AllShown(path->GetProblems()), ElementsAre("0 /m/+a: it leads back to a folder that encloses it",
                                                         "0 /m/+b: it leads back to a folder that encloses it"));
}

TEST(ReadingProblems, ReadAFolderTwiceThatTwoLinksLeadToOnDifferentBranches) {
  MemoryStorage storage;
  storage.WithFiles({u"/shared/f"}).WithFolders({u"/m"});
  storage.WithLink(u"/m/+a", u"/shared").WithLink(u"/m/+b", u"/shared");

  const auto path = storage.Path({u"/m"});

  EXPECT_THAT(FirstOf(*path, u"f"), ElementsAre("/m/+a: f", "/m/+b: f"));
  EXPECT_THAT(AllShown(path->GetProblems()), IsEmpty());
}

TEST(ReadingProblems, EndThePackagesNestedDeeperThanIsFollowed) {
  constexpr std::size_t kNested = 130;
  std::u16string deepest = u"/m";
  for (std::size_t depth = 1; depth <= kNested; ++depth) deepest += u"/+p";
  MemoryStorage storage;
  storage.WithFiles({deepest + u"/f", u"/m/f", u"/n/f"});

  const auto path = storage.Path({u"/m", u"/n"});

  ASSERT_THAT(path->GetProblems(), SizeIs(1));
  EXPECT_EQ(path->GetProblems()[0].kind, ProblemKind::TooDeep);
  EXPECT_EQ(path->GetProblems()[0].position, 0U);
  EXPECT_EQ(path->GetProblems()[0].location, InMemory(deepest).getParent());
  EXPECT_THAT(FirstOf(*path, u"f"), ElementsAre("/m: f", "/n: f"));
  EXPECT_THAT(path->GetMethodEntries(), SizeIs(kNested - 1));
}

TEST(ReadingProblems, StandInPathOrderWithTheProblemsOfTheListItself) {
  MemoryStorage storage;
  storage.WithFolders({u"/a"}).WithLink(u"/a/@c", u"/a").WithLink(u"/a/+b", u"/a");

  const auto path = storage.Path({u"/missing", u"/a", u"/missing", u"/gone"});

  EXPECT_THAT(AllShown(path->GetProblems()),
              ElementsAre("0 /missing: there is no such folder", "1 /a/+b: it leads back to a folder that encloses it",
                          "1 /a/@c: it leads back to a folder that encloses it",
                          "2 /missing: it stands earlier on the path", "3 /gone: there is no such folder"));
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
