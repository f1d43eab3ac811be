#include "shadow_grading.hpp"

#include <gmock/gmock.h>

#include <fakes/counting_storage_provider.hpp>
#include <fakes/failing_storage_provider.hpp>
#include <fl/filesystem/displayed_text.hpp>
#include <unit/environment/memory_storage.hpp>

namespace vornixpath {
namespace {

using foundation::storage::fakes::CountingStorageProvider;
using foundation::storage::fakes::FailingStorageProvider;
using foundation::storage::fakes::Fault;
using foundation::storage::fakes::StorageOperation;
using foundation::storage::vfs::VornixStorageSystem;
using Quorvex::PathEnvironment::InMemory;
using Quorvex::PathEnvironment::MemoryStorage;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::StartsWith;

std::vector<GradedShadow> Graded(const Quorvex::PathManagement::IPath& path) {
  return GradedShadowsOf(path, {u".vnx"}, VornixStorageSystem::GetStorageSystemReference());
}

std::vector<std::string> GradesOn(const Quorvex::PathManagement::IPath& path) {
  std::vector<std::string> grades;
  for (const GradedShadow& graded : Graded(path)) grades.emplace_back(NameOf(graded.grade));
  return grades;
}

// /a/f.vnx and /b/f.vnx.
MemoryStorage TwoFiles(std::string_view first, std::string_view second) {
  MemoryStorage storage;
  storage.GetProvider().AddFile(u"/a/f.vnx", first);
  storage.GetProvider().AddFile(u"/b/f.vnx", second);
  return storage;
}

std::string GradeOf(std::string_view first, std::string_view second) {
  const MemoryStorage storage = TwoFiles(first, second);
  return GradesOn(*storage.Path({u"/a", u"/b"})).at(0);
}

TEST(ShadowGrading, ComparesContent) {
  EXPECT_EQ(GradeOf("one", "one"), "identical");
  EXPECT_EQ(GradeOf("one", "two"), "different");
  EXPECT_EQ(GradeOf("one", "three"), "different");
  EXPECT_EQ(GradeOf("", ""), "identical");
}

TEST(ShadowGrading, ComparesFilesOfManyPiecesToTheEnd) {
  const std::string large(3'000'000, 'x');
  std::string atTheEnd = large;
  atTheEnd.back() = 'y';

  EXPECT_EQ(GradeOf(large, large), "identical");
  EXPECT_EQ(GradeOf(large, atTheEnd), "different");
}

TEST(ShadowGrading, StopsAtTheFirstPieceThatDiffers) {
  const std::string large(3'000'000, 'x');
  std::string atTheBeginning = large;
  atTheBeginning.front() = 'y';
  MemoryStorage storage = TwoFiles(large, atTheBeginning);
  const auto counting = storage.Through<CountingStorageProvider>();

  EXPECT_THAT(GradesOn(*storage.Path({u"/a", u"/b"})), ElementsAre("different"));
  EXPECT_EQ(counting->GetCount(StorageOperation::Read), 2U);
}

TEST(ShadowGrading, KnowsOneFileBehindALink) {
  MemoryStorage storage;
  storage.GetProvider().AddFile(u"/a/f.vnx", "content");
  storage.WithLink(u"/b/f.vnx", u"../a/f.vnx");
  const auto counting = storage.Through<CountingStorageProvider>();

  EXPECT_THAT(GradesOn(*storage.Path({u"/a", u"/b"})), ElementsAre("same-file"));
  EXPECT_EQ(counting->GetCount(StorageOperation::OpenForReading), 0U);
}

TEST(ShadowGrading, TellsFilesOfTwoStoragesApartWhateverTheirIdentity) {
  const MemoryStorage first;
  const MemoryStorage second(Quorvex::PathEnvironment::NameComparison::Exact, u"other");
  first.GetProvider().AddFile(u"/a/f.vnx", "one");
  second.GetProvider().AddFile(u"/a/f.vnx", "two");

  const auto path = Quorvex::PathEnvironment::ReadPath({InMemory(u"/a"), InMemory(u"/a", u"other")});
  EXPECT_THAT(GradesOn(*path), ElementsAre("different"));
}

TEST(ShadowGrading, ReadsNothingWhenSizesDiffer) {
  MemoryStorage storage = TwoFiles("one", "three");
  const auto counting = storage.Through<CountingStorageProvider>();

  EXPECT_THAT(GradesOn(*storage.Path({u"/a", u"/b"})), ElementsAre("different"));
  EXPECT_EQ(counting->GetCount(StorageOperation::OpenForReading), 0U);
}

TEST(ShadowGrading, AsksAboutFilesThatCompeteOnly) {
  MemoryStorage storage;
  storage.WithFiles({u"/a/f.vnx", u"/b/f.vnx", u"/c/f.vnx", u"/a/only.vnx", u"/a/+p/K.vnx", u"/b/+p/@K/K.vnx",
                     u"/a/g.vnx", u"/b/G.vnx"});
  const auto counting = storage.Through<CountingStorageProvider>();
  const auto path = storage.Path({u"/a", u"/b", u"/c"});
  counting->Reset();

  EXPECT_EQ(Graded(*path).size(), 4U);
  EXPECT_EQ(counting->GetCount(), 3U);
  for (const auto* file : {u"/a/f.vnx", u"/b/f.vnx", u"/c/f.vnx"}) {
    EXPECT_EQ(counting->GetCount(StorageOperation::Stat, InMemory(file)), 1U);
  }
}

TEST(ShadowGrading, HasNoNeedOfContentForLetterCaseAndKind) {
  const MemoryStorage storage =
      std::move(MemoryStorage().WithFiles({u"/a/g.vnx", u"/b/G.vnx", u"/a/@K/K.vnx", u"/b/K.vnx"}));

  EXPECT_THAT(GradesOn(*storage.Path({u"/a", u"/b"})), testing::UnorderedElementsAre("letter-case", "kind"));
}

class UnreadableFile : public testing::TestWithParam<StorageOperation> {};

TEST_P(UnreadableFile, IsTakenForDifferentWithTheReason) {
  for (const auto* file : {u"/a/f.vnx", u"/b/f.vnx"}) {
    MemoryStorage storage = TwoFiles("one", "one");
    const auto failing = storage.Through<FailingStorageProvider>();
    const auto path = storage.Path({u"/a", u"/b"});
    failing->Plan({.operation = GetParam(),
                   .location = InMemory(file),
                   .error = std::make_error_code(std::errc::permission_denied)});

    const std::vector<GradedShadow> graded = Graded(*path);
    ASSERT_EQ(graded.size(), 1U);
    EXPECT_EQ(graded.front().grade, ShadowGrade::Different);
    EXPECT_THAT(graded.front().unread, StartsWith("cannot "));
    const std::string place = fl::filesystem::to_displayed_text(std::u16string(file));
    EXPECT_THAT(graded.front().unread, EndsWith(" \"memory://" + place + "\": Permission denied"));
  }
}

INSTANTIATE_TEST_SUITE_P(WhateverIsRefused, UnreadableFile,
                         testing::Values(StorageOperation::Stat, StorageOperation::OpenForReading,
                                         StorageOperation::Read),
                         [](const auto& param) { return "at" + std::to_string(static_cast<int>(param.param)); });

TEST(ShadowGrading, GivesNoReasonForWhatWasCompared) {
  const MemoryStorage storage = TwoFiles("one", "two");

  EXPECT_THAT(Graded(*storage.Path({u"/a", u"/b"})).at(0).unread, IsEmpty());
}

}  // namespace
}  // namespace vornixpath
