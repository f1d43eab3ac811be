// What is masked is as though it were not there: random trees, random masks, in any spelling and any order, and every
// question answered as by a path on which the masked folders do not stand.

#include "loaded_path.hpp"

#include <gmock/gmock.h>

#include <algorithm>
#include <fl/filesystem/displayed_text.hpp>
#include <functional>
#include <iostream>
#include <search_path_utilities/path_editing.hpp>
#include <support/random_source.hpp>
#include <unit/environment/memory_storage.hpp>

#include "all_kinds.hpp"
#include "file_location.hpp"
#include "folder_numbers.hpp"
#include "path_troubles.hpp"
#include "question.hpp"
#include "visible_files.hpp"

namespace vornixpath {
namespace {

using fl::filesystem::to_displayed_text;
using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::NameComparison;
using Quorvex::PathEnvironment::InMemory;
using Quorvex::PathEnvironment::MemoryStorage;
using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::FoundItem;
using Quorvex::PathManagement::IPath;
using Quorvex::PathManagement::MainScope;
using Quorvex::PathManagement::VisibleScope;
using Quorvex::PathManagement::support::RandomSource;
using testing::ElementsAre;
using testing::IsEmpty;
using Texts = std::vector<std::string>;

// The folders that may stand on the path. Some stand within others, "/none" is missing.
const std::vector<std::u16string> kPlaces = {u"/m0",    u"/m1",    u"/m2",         u"/m3",  u"/m0/+p",
                                             u"/m0/@x", u"/m1/@x", u"/m1/private", u"/none"};
// What a place may be spelled like, in front.
const std::vector<std::u16string> kWays = {u"", u"", u"/up", u"/up/up"};
const std::vector<std::u16string> kSpecialFolders = {u"/private", u"/resources", u"/+p", u"/@x", u"/@y", u"/sub"};
const std::vector<std::u16string> kFiles = {u"/x.vnx", u"/X.vnx", u"/y.vnx", u"/x.h"};
const std::vector<std::u16string> kNames = {u"x",    u"X",   u"y",    u"p/x",     u"P/x",       u"p/x/x",
                                            u"@x/x", u"m0/", u"m0/x", u"m1/+p/x", u"private/x", u"/m0/x"};

std::string Shown(const AbsoluteIRI& location) { return to_displayed_text(location.getPath()); }
std::string Shown(const EntryPtr& entry) { return entry ? Shown(entry->GetAbsoluteIRI()) : "none"; }
std::string Shown(const FoundItem& file) { return Shown(LocationOf(file)); }
std::string Shown(const boost::optional<FoundItem>& file) { return file ? Shown(*file) : "none"; }

template <class Things>
Texts AllShown(const Things& things) {
  Texts texts;
  for (const auto& thing : things) texts.push_back(Shown(thing));
  return texts;
}

std::vector<EntryPtr> Entries(const IPath& path) {
  std::vector<EntryPtr> entries;
  path.ForEachEntry(AllKinds(), [&entries](const EntryPtr& entry) {
    entries.push_back(entry);
    return false;
  });
  return entries;
}

// A random path of which some places are masked, and the path without those.
class RandomMasks {
 public:
  explicit RandomMasks(RandomSource& random)
      : storage_(random.OneIn(3) ? NameComparison::IgnoreCase : NameComparison::Exact) {
    storage_.WithLink(u"/up", u"/");
    for (const char16_t* const place : {u"/m0", u"/m1", u"/m2", u"/m3"}) Fill(place, 2, random);

    std::vector<std::u16string> masked = random.ListOf(4, [&] { return random.Pick(kPlaces); });
    for (std::size_t count = 1 + random.Below(8); count > 0; --count) {
      const std::u16string& place = random.Pick(kPlaces);
      const AbsoluteIRI folder = InMemory(random.Pick(kWays) + place);
      folders_.push_back(folder);
      if (std::find(masked.begin(), masked.end(), place) == masked.end()) foldersInSight_.push_back(folder);
    }
    for (const std::u16string& place : masked) masks_.push_back(InMemory(random.Pick(kWays) + place));
  }

  [[nodiscard]] LoadedPath Masked() const { return LoadedPath(folders_, masks_); }
  [[nodiscard]] LoadedPath WithoutThem() const { return LoadedPath(foldersInSight_); }
  [[nodiscard]] std::string Describe() const {
    return testing::PrintToString(AllShown(folders_)) + " without " + testing::PrintToString(AllShown(masks_));
  }

 private:
  void Fill(const std::u16string& folder, int depth, RandomSource& random) {
    storage_.WithFolders({folder});
    for (const std::u16string& file : kFiles) {
      if (random.OneIn(3)) storage_.WithFiles({folder + file});
    }
    if (depth == 0) return;
    for (const std::u16string& subfolder : kSpecialFolders) {
      if (random.OneIn(3)) Fill(folder + subfolder, depth - 1, random);
    }
  }

  MemoryStorage storage_;
  LoadedPath::Folders folders_;
  LoadedPath::Folders foldersInSight_;
  LoadedPath::Folders masks_;
};

void CompareFiles(const IPath& view, const IPath& expected, RandomSource& random) {
  const auto policy = static_cast<FilenameMatchingPolicy>(random.Below(3));
  const Question question{random.Pick(kNames), {u".vnx", u".h"}};
  boost::optional<AbsoluteIRI> folder;
  if (random.OneIn(2)) folder = InMemory(random.Pick(kWays) + random.Pick(kPlaces));
  SCOPED_TRACE(to_displayed_text(question.name) + " from " + (folder ? Shown(*folder) : "everywhere") + ", policy " +
               std::to_string(static_cast<int>(policy)));

  const Standpoint standpoint{view, folder, policy};
  const Standpoint other{expected, folder, policy};
  EXPECT_EQ(Shown(FindVisibleFile(standpoint, question.Target())), Shown(FindVisibleFile(other, question.Target())));
  EXPECT_EQ(AllShown(FindAllFiles(standpoint, question.Target())), AllShown(FindAllFiles(other, question.Target())));
  for (const auto& scope : {MainScope, VisibleScope, AllKinds()}) {
    EXPECT_EQ(Shown(view.FindFirstInScope(scope, question.Target(), policy)),
              Shown(expected.FindFirstInScope(scope, question.Target(), policy)));
    EXPECT_EQ(AllShown(view.GetPartiallyMatchingEntries(scope, question.name, policy)),
              AllShown(expected.GetPartiallyMatchingEntries(scope, question.name, policy)));
  }
}

void CompareFolders(const IPath& view, const IPath& expected) {
  EXPECT_EQ(AllShown(*view.GetMainEntries()), AllShown(*expected.GetMainEntries()));
  EXPECT_EQ(AllShown(view.GetMethodEntries()), AllShown(expected.GetMethodEntries()));
  EXPECT_EQ(AllShown(Entries(view)), AllShown(Entries(expected)));
  for (const std::u16string& place : kPlaces) {
    for (const std::u16string& way : kWays) {
      const AbsoluteIRI folder = InMemory(way + place);
      SCOPED_TRACE(Shown(folder));
      EXPECT_EQ(Shown(view.GetPathEntryFromAbsoluteIRI(folder, FilenameMatchingPolicy::Native)),
                Shown(expected.GetPathEntryFromAbsoluteIRI(folder, FilenameMatchingPolicy::Native)));
      const auto canonical = Quorvex::PathManagement::GetCanonicalIRI(folder);
      EXPECT_EQ(Shown(view.GetPathEntryFromAbsoluteIRI(canonical)),
                Shown(expected.GetPathEntryFromAbsoluteIRI(canonical)));
    }
  }
}

TEST(LoadedPath, AnswersAsThoughTheMaskedFoldersWereAbsent) {
  RandomSource random = RandomSource::OfThisRun(20'263);
  std::cout << random.Describe() << '\n';
  SCOPED_TRACE(random.Describe());
  for (int round = 0; round < RandomSource::Rounds(200) && !HasFailure(); ++round) {
    const RandomMasks masks(random);
    SCOPED_TRACE(masks.Describe());
    const LoadedPath masked = masks.Masked();
    const LoadedPath expected = masks.WithoutThem();

    CompareFolders(masked.GetView(), expected.GetView());
    for (int question = 0; question < 20; ++question) {
      CompareFiles(masked.GetView(), expected.GetView(), random);
    }
    EXPECT_EQ(TroublesOf(masked).size(), TroublesOf(expected).size());
  }
}

TEST(LoadedPath, GivesTheAnswerOfTheNextFolderInSightWhicheverAreMasked) {
  MemoryStorage storage;
  storage.WithFiles({u"/a/x.vnx", u"/b/x.vnx", u"/c/x.vnx", u"/d/x.vnx"});
  const LoadedPath::Folders folders = {InMemory(u"/a"), InMemory(u"/b"), InMemory(u"/c"), InMemory(u"/d")};
  const Question question{u"x", {u".vnx"}};
  const auto answerWithout = [&](const std::vector<std::u16string>& masks) {
    LoadedPath::Folders masked;
    for (const std::u16string& mask : masks) masked.push_back(InMemory(mask));
    const LoadedPath path(folders, masked);
    return Shown(FindVisibleFile({path.GetView(), boost::none, FilenameMatchingPolicy::Native}, question.Target()));
  };

  EXPECT_EQ(answerWithout({}), "/a/x.vnx");
  EXPECT_EQ(answerWithout({u"/a", u"/b"}), "/c/x.vnx") << "in a row";
  EXPECT_EQ(answerWithout({u"/c", u"/a"}), "/b/x.vnx") << "named out of path order";
  EXPECT_EQ(answerWithout({u"/c", u"/b", u"/a"}), "/d/x.vnx");
  EXPECT_EQ(answerWithout({u"/a", u"/b", u"/c", u"/d"}), "none");
}

TEST(LoadedPath, MasksAFolderUnderEverySpellingOfIt) {
  MemoryStorage storage;
  storage.WithFolders({u"/a", u"/b"}).WithLink(u"/link", u"/a").WithLink(u"/third", u"/a");
  const LoadedPath path({InMemory(u"/link"), InMemory(u"/a"), InMemory(u"/b")},
                        {InMemory(u"/third"), InMemory(u"/a"), InMemory(u"/link")});

  EXPECT_THAT(AllShown(*path.GetView().GetMainEntries()), ElementsAre("/b"));
  EXPECT_THAT(AllShown(path.GetMaskedFolders()), ElementsAre("/link"));
  EXPECT_THAT(path.GetIdleMasks(), IsEmpty());
  EXPECT_TRUE(path.IsMasked(0));
  EXPECT_FALSE(path.IsMasked(2));
  EXPECT_EQ(FolderNumbers(path.GetLeaf()).NumberOf(*path.GetView().GetMainEntries()->front()), 3U)
      << "as the path was given";
}

TEST(LoadedPath, HidesNothingForAMaskThatIsNoFolderOfThePath) {
  MemoryStorage storage;
  storage.WithFolders({u"/a/+p", u"/b"});
  const LoadedPath path({InMemory(u"/a")}, {InMemory(u"/b"), InMemory(u"/a/+p"), InMemory(u"/missing")});

  EXPECT_EQ(&path.GetView(), &path.GetLeaf());
  EXPECT_THAT(AllShown(path.GetIdleMasks()), ElementsAre("/b", "/a/+p", "/missing"));
}

TEST(LoadedPath, FindsAFolderInAnySpellingMaskedOrNot) {
  MemoryStorage storage;
  storage.WithFolders({u"/a", u"/b"}).WithLink(u"/link", u"/a").WithLink(u"/other", u"/b");
  const LoadedPath path({InMemory(u"/link"), InMemory(u"/b")}, {InMemory(u"/b")});

  EXPECT_EQ(Shown(path.FindFolder(InMemory(u"/a"))), "/link");
  EXPECT_EQ(Shown(path.FindFolder(InMemory(u"/other"))), "/b");
  EXPECT_EQ(path.FindFolder(InMemory(u"/c")), nullptr);
}

TEST(LoadedPath, TellsNoTroublesOfMaskedFolders) {
  const MemoryStorage storage;
  const LoadedPath path({InMemory(u"/missing"), InMemory(u"/gone")}, {InMemory(u"/missing")});

  const auto troubles = TroublesOf(path);

  ASSERT_EQ(troubles.size(), 1U);
  EXPECT_EQ(troubles[0].position, 1U);
}

}  // namespace
}  // namespace vornixpath
