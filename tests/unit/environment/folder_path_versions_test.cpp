// Versions of a path in which folders were replaced.

#include <gmock/gmock.h>

#include <stdexcept>

#include "memory_storage.hpp"
#include "shown.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using foundation::storage::vfs::CanonicalAbsoluteIRI;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// A path long enough that some of its folders can be replaced without becoming part of it for good.
class FolderPathVersions : public testing::Test {
 protected:
  static constexpr std::size_t kLength = 64;

  static std::u16string Numbered(std::size_t number) {
    const std::string digits = std::to_string(number);
    return u"/n" + std::u16string(digits.begin(), digits.end());
  }

  FolderPathVersions() {
    storage_.WithFiles({u"/a/f.x", u"/a/only.x", u"/a/@Old/m.x", u"/a/private/p.x", u"/b/f.x", u"/b/+p/@In/i.x"});
    std::vector<std::u16string> folders = {u"/a", u"/b", u"/missing"};
    for (std::size_t number = folders.size(); number < kLength; ++number) {
      folders.push_back(Numbered(number));
      storage_.WithFiles({folders.back() + u"/f.x", folders.back() + u"/unique" + Numbered(number).substr(1) + u".x"});
    }
    path_ = storage_.Path(folders);
  }

  [[nodiscard]] std::shared_ptr<const FolderPath> WithReread(const FolderPath& path,
                                                             const std::vector<std::u16string>& folders) const {
    std::vector<std::shared_ptr<const FolderEntry>> entries;
    for (const auto& folder : folders) entries.push_back(storage_.Entry(folder));
    return path.WithReplaced(entries);
  }

  static std::string First(const FolderPath& path, const std::u16string& name) {
    return Shown(path.FindFirstInScope(kEveryKind, Wanted{name, {u".x"}}.Target(), kNative));
  }

  MemoryStorage storage_;
  std::shared_ptr<const FolderPath> path_;
};

TEST_F(FolderPathVersions, AnswerFromTheNewEntryAndLeaveTheFormerVersionAlone) {
  storage_.WithFiles({u"/a/new.x"});
  storage_.GetProvider().Remove(InMemory(u"/a/only.x"));

  const auto version = WithReread(*path_, {u"/a"});

  EXPECT_EQ(First(*version, u"new"), "/a: new.x");
  EXPECT_EQ(First(*version, u"only"), "none");
  EXPECT_EQ(First(*path_, u"new"), "none");
  EXPECT_EQ(First(*path_, u"only"), "/a: only.x");
}

TEST_F(FolderPathVersions, KeepTheOrderOfThePath) {
  storage_.WithFiles({u"/missing/f.x"});

  const auto version = WithReread(*path_, {u"/missing", u"/b"});

  EXPECT_EQ(First(*version, u"f"), "/a: f.x");
  const auto all = version->FindAllInScope(kEveryKind, Wanted{u"f", {u".x"}}.Target(), kNative);
  ASSERT_EQ(all.size(), kLength);
  EXPECT_EQ(Shown(all[1]), "/b: f.x");
  EXPECT_EQ(Shown(all[2]), "/missing: f.x");
  EXPECT_EQ(Shown(all[3]), "/n3: f.x");
  const auto main = *version->GetMainEntries();
  EXPECT_TRUE(version->FirstEntryIsBeforeSecondOnPath(*main[1], *main[2]));
  EXPECT_TRUE(version->FirstEntryIsBeforeSecondOnPath(*main[2], *main[3]));
  EXPECT_FALSE(version->FirstEntryIsBeforeSecondOnPath(*main[3], *main[2]));
}

TEST_F(FolderPathVersions, ShareEveryOtherEntry) {
  const auto version = WithReread(*path_, {u"/b"});

  const auto before = *path_->GetMainEntries();
  const auto after = *version->GetMainEntries();
  ASSERT_EQ(after.size(), before.size());
  for (std::size_t i = 0; i < before.size(); ++i) EXPECT_EQ(after[i] == before[i], i != 1) << i;
}

TEST_F(FolderPathVersions, KnowTheNewMethodEntriesAndNoLongerTheOldOnes) {
  const auto old = path_->GetMethodEntriesByName(kEveryKind, u"Old", kNative);
  storage_.WithFiles({u"/a/@New/n.x"});

  const auto version = WithReread(*path_, {u"/a"});

  const auto kept = version->GetMethodEntriesByName(kEveryKind, u"Old", kNative);
  const auto added = version->GetMethodEntriesByName(kEveryKind, u"New", kNative);
  EXPECT_THAT(AllShown(kept), ElementsAre("/a/@Old"));
  EXPECT_NE(kept, old);
  EXPECT_THAT(AllShown(added), ElementsAre("/a/@New"));
  EXPECT_TRUE(version->IsEntryOnPath(*added[0]));
  EXPECT_FALSE(version->IsEntryOnPath(*old[0]));
  EXPECT_EQ(version->GetParentEntryForEntry(*old[0]), nullptr);
  EXPECT_EQ(version->GetParentEntryForEntry(*added[0]), version->GetMainEntries()->front());
  EXPECT_EQ(version->GetMainEntryForEntry(*added[0]), version->GetMainEntries()->front());
  EXPECT_THAT(AllShown(version->GetMethodEntries()),
              ElementsAre("/a/private", "/a/@New", "/a/@Old", "/b/+p", "/b/+p/@In"));
  EXPECT_THAT(AllShown(version->GetPartiallyMatchingEntries(kEveryKind, u"p/In", kNative)), ElementsAre("/b/+p/@In"));
  EXPECT_THAT(AllShown(version->GetPartiallyMatchingEntries(kEveryKind, u"New", kNative)), ElementsAre("/a/@New"));
}

TEST_F(FolderPathVersions, FindLocationsInWhateverStandsThereNow) {
  const auto version = WithReread(*path_, {u"/a"});

  EXPECT_EQ(version->GetPathEntryFromAbsoluteIRI(InMemory(u"/a"), kNative), version->GetMainEntries()->at(0));
  EXPECT_EQ(version->GetPathEntryFromAbsoluteIRI(InMemory(u"/A"), kCaseInsensitive), version->GetMainEntries()->at(0));
  EXPECT_EQ(version->GetPathEntryFromAbsoluteIRI(CanonicalAbsoluteIRI(InMemory(u"/b"), u"")),
            version->GetMainEntries()->at(1));
  EXPECT_EQ(version->GetPathEntryFromAbsoluteIRI(InMemory(u"/a/private"), kNative),
            version->GetMainEntries()->at(0)->GetPrivateEntry());
}

TEST_F(FolderPathVersions, ReplaceWhatWasReplacedBefore) {
  storage_.WithFiles({u"/a/first.x"});
  const auto second = WithReread(*path_, {u"/a"});
  storage_.WithFiles({u"/b/third.x"});
  const auto third = WithReread(*second, {u"/b"});
  storage_.GetProvider().Remove(InMemory(u"/a/first.x"));
  const auto fourth = WithReread(*third, {u"/a"});

  EXPECT_EQ(First(*third, u"first"), "/a: first.x");
  EXPECT_EQ(First(*third, u"third"), "/b: third.x");
  EXPECT_EQ(First(*fourth, u"first"), "none");
  EXPECT_EQ(First(*fourth, u"third"), "/b: third.x");
}

TEST_F(FolderPathVersions, TellTheProblemsOfTheNewEntries) {
  ASSERT_EQ(path_->GetProblems().size(), 1U);
  EXPECT_EQ(path_->GetProblems()[0].position, 2U);
  storage_.WithFiles({u"/missing/f.x"});

  const auto version = WithReread(*path_, {u"/missing"});

  EXPECT_THAT(version->GetProblems(), IsEmpty());
}

TEST_F(FolderPathVersions, TakeManyReplacedFoldersInForGood) {
  auto version = path_;
  for (std::size_t number = 3; number < kLength; ++number) {
    storage_.WithFiles({Numbered(number) + u"/again.x"});
    version = WithReread(*version, {Numbered(number)});
    const auto all = version->FindAllInScope(kEveryKind, Wanted{u"again", {u".x"}}.Target(), kNative);
    ASSERT_EQ(all.size(), number - 2);
    const std::u16string unique = u"unique" + Numbered(number).substr(1);
    ASSERT_EQ(First(*version, unique), First(*path_, unique));
  }
  EXPECT_EQ(First(*version, u"f"), "/a: f.x");
}

TEST_F(FolderPathVersions, GiveAMethodEntryThatBothVersionsShareTheParentItHasInEach) {
  const FolderEntryFactory factory(foundation::storage::vfs::VornixStorageSystem::GetStorageSystemReference());
  std::vector<AbsoluteIRI> folders;
  for (const auto& entry : *path_->GetMainEntries()) folders.push_back(entry->GetAbsoluteIRI());
  const auto path = FolderPathFactory().CreateFolderPath(folders, factory);
  const EntryPtr shared = path->GetMainEntries()->front()->GetPrivateEntry();
  storage_.WithFiles({u"/a/new.x"});

  const auto version =
      path->WithReplaced({std::dynamic_pointer_cast<const FolderEntry>(factory.CreateMainEntry(InMemory(u"/a")))});

  for (const auto& each : {path, version}) {
    const EntryPtr main = each->GetMainEntries()->front();
    EXPECT_EQ(main->GetPrivateEntry(), shared);
    EXPECT_TRUE(each->IsEntryOnPath(*shared));
    EXPECT_EQ(each->GetParentEntryForEntry(*shared), main);
    EXPECT_EQ(each->GetMainEntryForEntry(*shared), main);
    EXPECT_EQ(each->GetPathEntryFromAbsoluteIRI(InMemory(u"/a/private"), kNative), shared);
    EXPECT_TRUE(each->FirstEntryIsBeforeSecondOnPath(*shared, *each->GetMainEntries()->at(1)));
    EXPECT_FALSE(each->FirstEntryIsBeforeSecondOnPath(*each->GetMainEntries()->at(1), *shared));
  }
  EXPECT_NE(version->GetMainEntries()->front(), path->GetMainEntries()->front());
}

TEST_F(FolderPathVersions, RefuseAMethodEntryInThePlaceOfAMainOne) {
  const auto path = storage_.Path({u"/a", u"/a/@Old"});
  const auto method =
      std::dynamic_pointer_cast<const FolderEntry>(path->GetMethodEntriesByName(kEveryKind, u"Old", kNative).front());

  EXPECT_THROW(static_cast<void>(path->WithReplaced({method})), std::invalid_argument);
  EXPECT_THROW(FolderPath({{method, 0}}, {}), std::invalid_argument);
}

TEST_F(FolderPathVersions, MayReplaceNothing) {
  const auto version = path_->WithReplaced({});

  EXPECT_EQ(*version->GetMainEntries(), *path_->GetMainEntries());
}

TEST_F(FolderPathVersions, RefuseAFolderThatIsNoMainEntryAndNameIt) {
  for (const auto* folder : {u"/elsewhere", u"/a/private"}) {
    try {
      static_cast<void>(WithReread(*path_, {folder}));
      FAIL() << "nothing was thrown";
    } catch (const std::invalid_argument& refusal) {
      EXPECT_THAT(refusal.what(), HasSubstr("memory://"));
    }
  }
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
