#include "recording_path.hpp"

#include <gmock/gmock.h>

#include <search_path_utilities/lookup.hpp>
#include <unit/environment/memory_storage.hpp>

#include "all_kinds.hpp"
#include "recording_entry.hpp"

namespace vornixpath {
namespace {

using foundation::storage::vfs::CanonicalAbsoluteIRI;
using Quorvex::PathEnvironment::InMemory;
using Quorvex::PathEnvironment::MemoryStorage;
using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::MainScope;
using Quorvex::PathManagement::detail::SearchTarget;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr auto kNative = FilenameMatchingPolicy::Native;

/// A recorder over a small path.
class RecordingPathTest : public testing::Test {
 protected:
  MemoryStorage storage_ = std::move(
      MemoryStorage().WithFiles({u"/a/@Shape/Shape.vnx", u"/a/private/helper.vnx", u"/a/one.vnx", u"/b/Shape.vnx"}));
  std::shared_ptr<const Quorvex::PathEnvironment::FolderPath> path_ = storage_.Path({u"/a", u"/b"});
  RecordingPath recorder_{*path_};
  std::u16string shape_ = u"Shape";
  std::vector<std::u16string> extensions_ = {u".vnx"};
  SearchTarget target_{shape_, extensions_};
};

TEST_F(RecordingPathTest, NotesNothingBeforeItIsAsked) { EXPECT_THAT(recorder_.GetSteps(), IsEmpty()); }

TEST_F(RecordingPathTest, AnswersAListAsThePathDoes) {
  EXPECT_EQ(recorder_.GetMainEntries(), path_->GetMainEntries());
  EXPECT_EQ(recorder_.GetMethodEntries(), path_->GetMethodEntries());
  EXPECT_EQ(recorder_.GetPartiallyMatchingEntries(AllKinds(), shape_, kNative),
            path_->GetPartiallyMatchingEntries(AllKinds(), shape_, kNative));
  EXPECT_EQ(recorder_.FindAllInScope(AllKinds(), target_, kNative),
            path_->FindAllInScope(AllKinds(), target_, kNative));
  EXPECT_EQ(recorder_.GetPathEntryFromAbsoluteIRI(CanonicalAbsoluteIRI(InMemory(u"/b"), u"b")),
            path_->GetMainEntries()->at(1));
  EXPECT_THAT(recorder_.GetSteps(), IsEmpty());
}

TEST_F(RecordingPathTest, WalksTheEntriesOfThePath) {
  std::vector<EntryPtr> walked;
  const auto note = [&walked](const EntryPtr& entry) {
    walked.push_back(entry);
    return false;
  };

  EXPECT_FALSE(recorder_.ForEachEntry(MainScope, note));
  EXPECT_EQ(walked, *path_->GetMainEntries());
  EXPECT_FALSE(recorder_.ConcurrentForEachEntry(MainScope, note));
  EXPECT_THAT(walked, SizeIs(4));
}

TEST_F(RecordingPathTest, TakesItsOwnEntriesForThoseOfThePath) {
  const EntryPtr classFolder = recorder_.GetMethodEntriesByName(MainScope, shape_, kNative).at(0);
  const EntryPtr folder = recorder_.GetPathEntryFromAbsoluteIRI(InMemory(u"/a"), kNative);
  const EntryPtr first = path_->GetMainEntries()->at(0);
  const EntryPtr second = path_->GetMainEntries()->at(1);

  EXPECT_TRUE(recorder_.IsEntryOnPath(*classFolder));
  EXPECT_TRUE(recorder_.IsEntryOnPath(*folder->GetPrivateEntry()));
  EXPECT_EQ(recorder_.GetMainEntryForEntry(*classFolder), first);
  EXPECT_EQ(recorder_.GetParentEntryForEntry(*classFolder), first);
  EXPECT_TRUE(recorder_.FirstEntryIsBeforeSecondOnPath(*folder, *second));
  EXPECT_FALSE(recorder_.FirstEntryIsBeforeSecondOnPath(*second, *classFolder));
}

TEST_F(RecordingPathTest, NotesNoOrderOfStrangers) {
  const EntryPtr stranger = storage_.Path({u"/a"})->GetMainEntries()->at(0);
  const EntryPtr first = path_->GetMainEntries()->at(0);

  EXPECT_TRUE(recorder_.FirstEntryIsBeforeSecondOnPath(*first, *stranger));
  EXPECT_THAT(recorder_.GetSteps(), IsEmpty());
}

TEST_F(RecordingPathTest, GivesBackTheEntryBehindARecordingOne) {
  const EntryPtr recording = recorder_.GetPathEntryFromAbsoluteIRI(InMemory(u"/a"), kNative);
  const EntryPtr original = path_->GetMainEntries()->at(0);

  EXPECT_NE(recording, original);
  EXPECT_EQ(OriginalOf(recording), original);
  EXPECT_EQ(&OriginalOf(*recording), original.get());
  EXPECT_EQ(OriginalOf(original), original);
}

TEST_F(RecordingPathTest, KeepsAMissAMiss) {
  EXPECT_EQ(recorder_.GetPathEntryFromAbsoluteIRI(InMemory(u"/c"), kNative), nullptr);
  EXPECT_EQ(recorder_.GetPathEntryFromAbsoluteIRI(InMemory(u"/b"), kNative)->GetPrivateEntry(), nullptr);
  EXPECT_THAT(recorder_.GetMethodEntriesByName(MainScope, u"Circle", kNative), IsEmpty());
}

TEST_F(RecordingPathTest, GivesARecordingEntryTheFaceOfTheOneBehindIt) {
  const EntryPtr original = path_->GetMainEntries()->at(0);
  const EntryPtr recording = recorder_.GetPathEntryFromAbsoluteIRI(InMemory(u"/a"), kNative);
  const auto items = original->GetItems();

  EXPECT_EQ(recording->GetEntryType(), original->GetEntryType());
  EXPECT_EQ(recording->GetAbsoluteIRI(), original->GetAbsoluteIRI());
  EXPECT_EQ(recording->GetItems(), items);
  EXPECT_EQ(recording->GetSecondSingleEntry(), original->GetSecondSingleEntry());
  EXPECT_EQ(*recording->GetFirstEntryGroup(), *original->GetFirstEntryGroup());
  EXPECT_EQ(*recording->GetSecondEntryGroup(), *original->GetSecondEntryGroup());
  EXPECT_EQ(*recording->GetThirdEntryGroup(), *original->GetThirdEntryGroup());
  EXPECT_EQ(recording->GetFilenameComparator(kNative), original->GetFilenameComparator(kNative));
  EXPECT_TRUE(recording->ForEachEntryInScope(MainScope, [&](const EntryPtr& entry) { return entry == original; }));
}

TEST_F(RecordingPathTest, NotesWhatALookupAsksInItsOrder) {
  const auto found = FindFirstFileVisibleOnPath(recorder_, target_, kNative);

  ASSERT_TRUE(found);
  const LookupSteps& steps = recorder_.GetSteps();
  ASSERT_THAT(steps, SizeIs(4));
  const EntryPtr classFolder = path_->GetMethodEntriesByName(MainScope, shape_, kNative).at(0);
  const auto& scope = std::get<AskedInScope>(steps[0]);
  EXPECT_TRUE(scope.onlyPlainFolders);
  EXPECT_EQ(scope.searched, *path_->GetMainEntries());
  EXPECT_EQ(scope.answer->GetPathEntry(), path_->GetMainEntries()->at(1));
  EXPECT_THAT(std::get<AskedForClassFolders>(steps[1]).answer, ElementsAre(classFolder));
  EXPECT_EQ(std::get<AskedInFolder>(steps[2]).folder, classFolder);
  EXPECT_EQ(std::get<AskedForOrder>(steps[3]).first, classFolder);
  EXPECT_EQ(std::get<AskedForOrder>(steps[3]).second, path_->GetMainEntries()->at(1));
  EXPECT_TRUE(std::get<AskedForOrder>(steps[3]).answer);
}

}  // namespace
}  // namespace vornixpath
