// What holds for every path and every edit of it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <fl/filesystem/displayed_text.hpp>
#include <functional>
#include <iterator>
#include <oracle/edited_path.hpp>
#include <search_path_utilities/path_editing.hpp>
#include <string>
#include <support/fake_main_path_manager.hpp>
#include <support/fake_working_folder.hpp>
#include <support/folder_list.hpp>
#include <support/mock_factories.hpp>
#include <support/mock_path.hpp>
#include <support/random_source.hpp>
#include <vector>

namespace Quorvex::PathManagement {
namespace {

using fl::filesystem::to_displayed_text;
using foundation::core::except::Notification;
using foundation::storage::vfs::AbsoluteIRI;
using support::FakeMainPathManager;
using support::FakeWorkingFolder;
using support::FolderList;
using support::FoldersAt;
using support::MessagesOf;
using support::NamesOf;
using support::RandomSource;

constexpr int kRounds = 5'000;

/// Few folders, so that lists hold repeats and edits hit what is there.
FolderList RandomFolders(RandomSource& random) {
  static const FolderList choices = FoldersAt("a b c d A a/b file:///a other:///a");
  FolderList folders;
  std::generate_n(std::back_inserter(folders), random.Below(9), [&] { return random.Pick(choices); });
  return folders;
}

Position RandomPosition(RandomSource& random) {
  return random.OneIn(2) ? Position::Beginning : static_cast<Position>(1 + random.Below(0xFFFFFFFF));
}

FolderList Added(const FolderList& path, const FolderList& given, Position position) {
  return position == Position::Beginning ? oracle::AddedAtBeginning(path, given) : oracle::AddedAtEnd(path, given);
}

std::vector<std::string> WarningsOf(const FolderList& missing) {
  std::vector<std::string> warnings;
  for (const AbsoluteIRI& folder : missing) {
    warnings.push_back("VORNIX:rmpath DirNotFound(" + to_displayed_text(GetStringFromIRI(folder)) + ")");
  }
  return warnings;
}

/// Makes random edits of a random path, of which each test says one thing.
class MainPathEditingLaws : public testing::Test {
 protected:
  void ForRandomEdits(std::uint64_t usualSeed,
                      const std::function<void(const FolderList& path, const FolderList& given)>& check) {
    random_ = RandomSource::OfThisRun(usualSeed);
    SCOPED_TRACE(random_.Describe());
    for (int round = 0; round < kRounds && !HasFailure(); ++round) {
      const FolderList path = RandomFolders(random_);
      const FolderList given = RandomFolders(random_);
      SCOPED_TRACE("path: " + NamesOf(path) + ", given: " + NamesOf(given));
      manager_.Replace(path);
      check(path, given);
    }
  }

  RandomSource random_{0};
  FakeMainPathManager manager_;
};

TEST_F(MainPathEditingLaws, AddingIsWhatALiteralReadingOfTheRulesGives) {
  ForRandomEdits(3301, [this](const FolderList& path, const FolderList& given) {
    const Position position = RandomPosition(random_);

    const Notification result = AddIRIsToVornixPath(given, manager_, position);

    EXPECT_EQ(NamesOf(manager_.GetFolders()), NamesOf(Added(path, given, position)));
    EXPECT_TRUE(result.IsEmpty());
  });
}

TEST_F(MainPathEditingLaws, RemovingIsWhatALiteralReadingOfTheRulesGives) {
  int removals = 0;
  int refusals = 0;
  ForRandomEdits(3302, [&](const FolderList& path, const FolderList& given) {
    const FolderList missing = oracle::Missing(path, given);
    ++(missing.empty() ? removals : refusals);

    const Notification result = RemoveIRIsFromVornixPath(given, manager_);

    EXPECT_EQ(NamesOf(manager_.GetFolders()), NamesOf(missing.empty() ? oracle::Removed(path, given) : path));
    EXPECT_EQ(MessagesOf(result), WarningsOf(missing));
  });
  EXPECT_GT(removals, kRounds / 10);
  EXPECT_GT(refusals, kRounds / 10);
}

TEST_F(MainPathEditingLaws, AddingTwiceIsAddingOnce) {
  ForRandomEdits(3303, [this](const FolderList& /*path*/, const FolderList& given) {
    const Position position = RandomPosition(random_);
    static_cast<void>(AddIRIsToVornixPath(given, manager_, position));
    const FolderList once = manager_.GetFolders();

    static_cast<void>(AddIRIsToVornixPath(given, manager_, position));

    EXPECT_EQ(NamesOf(manager_.GetFolders()), NamesOf(once));
  });
}

TEST_F(MainPathEditingLaws, RemovingWhatWasAddedLeavesTheRestOfThePathAsItWas) {
  ForRandomEdits(3304, [this](const FolderList& path, const FolderList& given) {
    static_cast<void>(AddIRIsToVornixPath(given, manager_, RandomPosition(random_)));

    EXPECT_TRUE(RemoveIRIsFromVornixPath(given, manager_).IsEmpty());

    EXPECT_EQ(NamesOf(manager_.GetFolders()), NamesOf(oracle::Removed(path, given)));
  });
}

TEST_F(MainPathEditingLaws, AddedFoldersStandOnceEachInTheirOrderAtTheirEnd) {
  ForRandomEdits(3305, [this](const FolderList& /*path*/, const FolderList& given) {
    const Position position = RandomPosition(random_);
    static_cast<void>(AddIRIsToVornixPath(given, manager_, position));

    const FolderList expected = oracle::FirstMentions(given);
    const FolderList& folders = manager_.GetFolders();
    ASSERT_GE(folders.size(), expected.size());
    const auto length = static_cast<std::ptrdiff_t>(expected.size());
    const auto start = position == Position::Beginning ? folders.begin() : folders.end() - length;
    EXPECT_EQ(NamesOf({start, start + length}), NamesOf(expected));
    for (const AbsoluteIRI& folder : given) EXPECT_EQ(std::count(folders.begin(), folders.end(), folder), 1);
  });
}

TEST_F(MainPathEditingLaws, AddingInTwoCallsAtTheEndIsAddingTheLaterMentionsInOne) {
  ForRandomEdits(3306, [this](const FolderList& path, const FolderList& given) {
    const FolderList later = RandomFolders(random_);
    static_cast<void>(AddIRIsToVornixPath(given, manager_, Position::End));
    static_cast<void>(AddIRIsToVornixPath(later, manager_, Position::End));
    const FolderList inTwoCalls = manager_.GetFolders();

    manager_.Replace(path);
    const FolderList together = oracle::Joined(oracle::Removed(given, later), later);
    static_cast<void>(AddIRIsToVornixPath(together, manager_, Position::End));

    EXPECT_EQ(NamesOf(manager_.GetFolders()), NamesOf(inTwoCalls));
  });
}

/// Up to six names, of which some mean the same folder and some are rejected.
std::vector<std::u16string> RandomNames(RandomSource& random) {
  static const std::vector<std::u16string> choices = {u"a", u"/a", u"/home/a", u"./a", u"b", u"/b", u"gone", u"hidden"};
  std::vector<std::u16string> names = random.ListOf(6, [&] { return random.Pick(choices); });
  return names;
}

class NameEditingLaws : public MainPathEditingLaws {
 protected:
  NameEditingLaws() {
    workingFolder_.Reject(u"gone", 4);
    workingFolder_.Reject(u"hidden", 3);
  }

  /// What the rejected ones of `names` are answered with.
  static std::vector<std::string> WarningsOfRejected(const std::vector<std::u16string>& names) {
    std::vector<std::string> warnings;
    for (const auto& name : names) {
      if (name == u"gone") warnings.emplace_back("VORNIX:mpath nameNonexistentOrNotADirectory(gone)");
      if (name == u"hidden") warnings.emplace_back("VORNIX:mpath directoryPermissionDenied(hidden)");
    }
    return warnings;
  }
  /// What `names`, all of them accepted, mean.
  static FolderList MeaningOf(const std::vector<std::u16string>& names) {
    FolderList folders;
    for (const auto& name : names) {
      folders.emplace_back(name.starts_with(u'/') ? u"memory://" + name : u"memory:///home/" + name);
    }
    return folders;
  }

  FakeWorkingFolder workingFolder_{AbsoluteIRI(u"memory:///home")};
  testing::StrictMock<support::MockPathFactory> pathFactory_;
  testing::StrictMock<support::MockPathEntryFactory> entryFactory_;
  testing::StrictMock<support::MockPath> path_;
};

TEST_F(NameEditingLaws, AddingIsAllOrNothing) {
  ForRandomEdits(3307, [this](const FolderList& path, const FolderList& /*given*/) {
    const auto names = RandomNames(random_);
    const auto rejected = WarningsOfRejected(names);
    const Position position = RandomPosition(random_);

    const Notification result =
        AddFoldersToVornixPath(names, workingFolder_, manager_, pathFactory_, entryFactory_, position);

    EXPECT_EQ(MessagesOf(result), rejected);
    EXPECT_EQ(NamesOf(manager_.GetFolders()),
              NamesOf(rejected.empty() ? Added(path, MeaningOf(names), position) : path));
  });
}

TEST_F(NameEditingLaws, RemovingIsAllOrNothing) {
  ForRandomEdits(3308, [this](const FolderList& given, const FolderList& other) {
    const auto names = RandomNames(random_);
    const auto rejected = WarningsOfRejected(names);
    const FolderList path = oracle::Joined(oracle::Joined(given, FoldersAt("home/a b")), other);
    manager_.Replace(path);

    const Notification result = RemoveFoldersFromVornixPath(names, workingFolder_, manager_, pathFactory_, path_);

    const FolderList missing = rejected.empty() ? oracle::Missing(path, MeaningOf(names)) : FolderList();
    const bool isRemoved = rejected.empty() && missing.empty();
    EXPECT_EQ(MessagesOf(result), rejected.empty() ? WarningsOf(missing) : rejected);
    EXPECT_EQ(NamesOf(manager_.GetFolders()), NamesOf(isRemoved ? oracle::Removed(path, MeaningOf(names)) : path));
  });
}

}  // namespace
}  // namespace Quorvex::PathManagement
