// What an explanation must hold on any tree: it tells of the winner that the lookup finds, of each file it hides once,
// and its hints are true.

#include "explanation.hpp"

#include <gmock/gmock.h>

#include <fl/filesystem/displayed_text.hpp>
#include <optional>
#include <search_path_utilities/lookup.hpp>
#include <set>
#include <support/mock_path.hpp>
#include <support/random_source.hpp>
#include <tuple>
#include <unit/environment/memory_storage.hpp>

#include "all_kinds.hpp"
#include "file_location.hpp"
#include "visible_files.hpp"

namespace vornixpath {
namespace {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::NameComparison;
using Quorvex::PathEnvironment::MemoryStorage;
using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::FoundItem;
using Quorvex::PathManagement::PathEntryType;
using Quorvex::PathManagement::support::RandomSource;

const std::vector<std::u16string> kSpecialFolders = {u"/private", u"/resources", u"/+p",  u"/+P",   u"/@x",
                                                     u"/@X",      u"/@y",        u"/sub", u"/+p/+p"};
const std::vector<std::u16string> kFiles = {u"/x.vnx", u"/X.vnx", u"/x.h", u"/y.vnx", u"/x", u"/x.VNX"};
const std::vector<std::u16string> kNames = {u"x",   u"X",     u"y",        u"x.h",   u"x.vnx",     u"z",     u"p/x",
                                            u"P/x", u"p/x/x", u"@x/x.vnx", u"sub/x", u"private/x", u"p/p/x", u"/m0/x"};
const std::vector<std::vector<std::u16string>> kExtensionLists = {
    {u".vnx"}, {u".vnx", u".h", u""}, {u".h", u".vnx"}, {u".vnx", u".VNX"}, {}};

const std::vector<std::u16string> kSpecialFoldersOnPath = {u"/m0/private", u"/m0/@x", u"/m0/@X",  u"/m1/@x",
                                                           u"/m0/+p",      u"/m1/+p", u"/m0/sub", u"/m0/+p/@x"};

/// A path over a random tree in memory.
class RandomTree {
 public:
  explicit RandomTree(RandomSource& random)
      : storage_(random.OneIn(3) ? NameComparison::IgnoreCase : NameComparison::Exact) {
    std::vector<std::u16string> folders;
    for (std::size_t count = 1 + random.Below(4); folders.size() < count;) {
      folders.push_back(u"/m" + std::u16string(1, static_cast<char16_t>(u'0' + folders.size())));
      Fill(folders.back(), 2, random);
    }
    if (random.OneIn(4)) folders.push_back(folders.front());
    while (random.OneIn(2))
      folders.insert(folders.begin() + AnyPlace(folders, random), random.Pick(kSpecialFoldersOnPath));
    if (random.OneIn(4)) folders.push_back(u"/missing");
    std::vector<AbsoluteIRI> locations;
    for (const std::u16string& folder : folders) locations.push_back(Quorvex::PathEnvironment::InMemory(folder));
    LoadedPath::Folders masks;
    while (random.OneIn(3)) masks.push_back(random.Pick(locations));
    path_.emplace(locations, masks);
  }

  [[nodiscard]] const LoadedPath& GetPath() const { return *path_; }

 private:
  static std::ptrdiff_t AnyPlace(const std::vector<std::u16string>& folders, RandomSource& random) {
    return static_cast<std::ptrdiff_t>(random.Below(folders.size() + 1));
  }

  void Fill(const std::u16string& folder, int depth, RandomSource& random) {
    storage_.WithFolders({folder});
    for (const std::u16string& file : kFiles) {
      if (random.OneIn(4)) storage_.WithFiles({folder + file});
    }
    if (depth == 0) return;
    for (const std::u16string& subfolder : kSpecialFolders) {
      if (random.OneIn(3)) Fill(folder + subfolder, depth - 1, random);
    }
  }

  MemoryStorage storage_;
  std::optional<LoadedPath> path_;
};

boost::optional<AbsoluteIRI> AnyFolderOrNone(const LoadedPath& path, RandomSource& random) {
  if (random.OneIn(2)) return boost::none;
  std::vector<boost::optional<AbsoluteIRI>> folders;
  path.GetLeaf().ForEachEntry(AllKinds(), [&folders](const EntryPtr& entry) {
    folders.emplace_back(entry->GetAbsoluteIRI());
    return false;
  });
  return random.Pick(folders);
}

/// Calls `check(path, standpoint, question, numbers)` for many random ones.
template <class Check>
void ForManyQuestions(const Check& check) {
  RandomSource random = RandomSource::OfThisRun(20260);
  SCOPED_TRACE(random.Describe());
  for (int round = 0; round < RandomSource::Rounds(80); ++round) {
    const RandomTree tree(random);
    const FolderNumbers numbers(tree.GetPath().GetLeaf());
    for (int count = 0; count < 12; ++count) {
      const auto policy = static_cast<FilenameMatchingPolicy>(random.Below(3));
      const Standpoint standpoint{tree.GetPath().GetView(), AnyFolderOrNone(tree.GetPath(), random), policy};
      const Question question{random.Pick(kNames), random.Pick(kExtensionLists)};
      SCOPED_TRACE(fl::filesystem::to_displayed_text(question.name) + ", round " + std::to_string(round));
      check(tree.GetPath(), standpoint, question, numbers);
      if (testing::Test::HasFailure()) return;
    }
  }
}

TEST(Explanation, TellsOfTheWinnerThatTheLookupFindsAndOfEachHiddenFileOnce) {
  ForManyQuestions([](const auto& path, const Standpoint& standpoint, const Question& question, const auto& numbers) {
    const Explanation explanation = Explain(path, standpoint, question, numbers);

    EXPECT_TRUE(explanation.winner == FindVisibleFile(standpoint, question.Target()));
    std::vector<FoundItem> told;
    if (explanation.winner) told.push_back(*explanation.winner);
    for (const HiddenFile& hidden : explanation.hidden) told.push_back(hidden.file);
    EXPECT_TRUE(told == FindAllFiles(standpoint, question.Target()));
    std::set<AbsoluteIRI> locations;
    for (const FoundItem& file : told) EXPECT_TRUE(locations.insert(LocationOf(file)).second);
  });
}

// Whether `reason` is one that can be seen to hold between the two.
bool Holds(HidingReason reason, const FoundItem& winner, const FoundItem& loser, const FolderNumbers& numbers) {
  const PathEntryType kindOfWinner = winner.GetPathEntry()->GetEntryType();
  const PathEntryType kindOfLoser = loser.GetPathEntry()->GetEntryType();
  const std::size_t numberOfWinner = numbers.NumberOf(*winner.GetPathEntry());
  const std::size_t numberOfLoser = numbers.NumberOf(*loser.GetPathEntry());
  const bool isOneFolder = winner.GetPathItem()->folderIRI == loser.GetPathItem()->folderIRI;
  switch (reason) {
    case HidingReason::LaterExtension:
    case HidingReason::OtherLetterCase:
    case HidingReason::LaterByName:
      return isOneFolder;
    case HidingReason::PrivateFolderFirst:
      return kindOfWinner == PathEntryType::Private && kindOfLoser != PathEntryType::Private;
    case HidingReason::ClassFoldersFirst:
      return kindOfWinner == PathEntryType::Class && kindOfLoser == PathEntryType::Main;
    case HidingReason::ClassFolderLater:
      return kindOfLoser == PathEntryType::Class && numberOfWinner < numberOfLoser;
    case HidingReason::ClassFolderNotEarlier:
      return kindOfLoser == PathEntryType::Class && numberOfWinner == numberOfLoser;
    case HidingReason::PlainFileLater:
      return kindOfLoser == PathEntryType::Main && numberOfWinner < numberOfLoser;
    case HidingReason::LaterOnPath:
      return numberOfWinner < numberOfLoser;
    case HidingReason::LaterInTheSameFolder:
      return !isOneFolder && numberOfWinner == numberOfLoser;
  }
  return false;
}

TEST(Explanation, GivesNoReasonThatDoesNotHold) {
  ForManyQuestions([](const auto& path, const Standpoint& standpoint, const Question& question, const auto& numbers) {
    const Explanation explanation = Explain(path, standpoint, question, numbers);

    for (const HiddenFile& hidden : explanation.hidden) {
      EXPECT_TRUE(Holds(hidden.reason, *explanation.winner, hidden.file, numbers)) << static_cast<int>(hidden.reason);
    }
  });
}

TEST(Explanation, TellsOfEachFileThatTheMasksTakeAway) {
  ForManyQuestions([](const auto& path, const Standpoint& standpoint, const Question& question, const auto& numbers) {
    const Explanation explanation = Explain(path, standpoint, question, numbers);

    std::set<AbsoluteIRI> told;
    for (const FoundItem& file : FindAllFiles(standpoint, question.Target())) told.insert(LocationOf(file));
    for (const FoundItem& file : explanation.maskedFiles) EXPECT_TRUE(told.insert(LocationOf(file)).second);
    std::set<AbsoluteIRI> withoutMasks;
    const Standpoint unmasked{path.GetLeaf(), standpoint.folder, standpoint.policy};
    for (const FoundItem& file : FindAllFiles(unmasked, question.Target())) withoutMasks.insert(LocationOf(file));
    EXPECT_TRUE(told == withoutMasks);
    EXPECT_EQ(explanation.maskedFolders, path.GetMaskedFolders());
  });
}

TEST(Explanation, NamesNothingNearWhenThereIsAWinner) {
  ForManyQuestions([](const auto& path, const Standpoint& standpoint, const Question& question, const auto& numbers) {
    const Explanation explanation = Explain(path, standpoint, question, numbers);

    EXPECT_TRUE(!explanation.winner || (explanation.near.empty() && explanation.furtherNear == 0));
  });
}

TEST(Explanation, OffersOnlyNamesThatMeanTheFileTheyAreOfferedFor) {
  ForManyQuestions([](const auto& path, const Standpoint& standpoint, const Question& question, const auto& numbers) {
    const Explanation explanation = Explain(path, standpoint, question, numbers);

    for (const NearName& name : explanation.near) {
      if (name.otherName.empty()) continue;
      const std::vector<std::u16string> none = {u""};
      const Question other{name.otherName, name.needsNoExtension ? none : question.extensions};
      const Standpoint place{path.GetView(), name.askFrom ? name.askFrom : standpoint.folder, standpoint.policy};
      const auto found = FindVisibleFile(place, other.Target());
      ASSERT_TRUE(found);
      EXPECT_EQ(LocationOf(*found), name.location);
    }
  });
}

TEST(Explanation, ListsNearNamesLikelierFirstAndNoneTwice) {
  ForManyQuestions([](const auto& path, const Standpoint& standpoint, const Question& question, const auto& numbers) {
    const Explanation explanation = Explain(path, standpoint, question, numbers);

    const auto& near = explanation.near;
    for (std::size_t i = 0; i < near.size(); ++i) {
      if (i > 0 && !Quorvex::PathManagement::IsPartialPathname(question.name)) {
        EXPECT_LE(std::tuple(near[i - 1].obstacles.size(), near[i - 1].obstacles),
                  std::tuple(near[i].obstacles.size(), near[i].obstacles));
      }
      for (std::size_t j = 0; j < i; ++j) EXPECT_FALSE(near[j].location == near[i].location);
    }
  });
}

}  // namespace
}  // namespace vornixpath
