// Random trees, random questions: a path over folders answers as a plain walk over its entries does.

#include <gmock/gmock.h>

#include <iostream>
#include <oracle/plain_walk.hpp>
#include <support/random_source.hpp>

#include "memory_storage.hpp"
#include "shown.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using foundation::storage::vfs::CanonicalAbsoluteIRI;
using PathManagement::oracle::PlainWalk;
using PathManagement::support::RandomSource;

// Few, so that names meet; letter-case twins, dots anywhere, letters whose folding changes their number.
const std::vector<std::u16string> kBaseNames = {u"a",   u"A",  u"b",  u"ab",     u"a.b",
                                                u"A.B", u".h", u"a.", u"\u00DF", u"SS"};
const std::vector<std::u16string> kExtensions = {u"", u".x", u".X", u".y", u".x.y", u".", u"b", u".b.x"};
const std::vector<std::u16string> kSpecialNames = {u"+a",  u"+A",      u"+b",        u"@a",      u"@A", u"@ab",
                                                   u"@ss", u"private", u"resources", u"Private", u"@"};
const std::vector<std::u16string> kMainFolders = {u"/m",    u"/n",    u"/M", u"/m/sub",    u"/+a",
                                                  u"/m/+a", u"/n/@a", u"/",  u"/n/private"};
const std::vector<FilenameMatchingPolicy> kPolicies = {kCaseSensitive, kCaseInsensitive, kNative, kUnknownPolicy};

const std::vector<std::u16string> kSchemes = {u"memory", u"loose"};

// Two trees, of which the second always ignores letter case, and a path over some of their folders.
class RandomPath {
 public:
  RandomPath(RandomSource& random, NameComparison comparison) : storage_(comparison) {
    for (MemoryStorage* const storage : {&storage_, &loose_}) {
      storage->WithFolders(kMainFolders);
      for (int file = 0; file < 40; ++file) AddFile(random, *storage);
      if (random.OneIn(2)) storage->WithLink(u"/link", u"/m");
    }

    std::vector<AbsoluteIRI> listed;
    for (std::size_t count = random.Below(6); count > 0; --count) {
      listed.push_back(InMemory(random.Pick(kMainFolders), random.Pick(kSchemes)));
    }
    listed.push_back(InMemory(random.OneIn(3) ? u"/link" : u"/n", random.Pick(kSchemes)));
    path_ = ReadPath(listed);
  }

  /// Puts folders around those of the path, so many that a few of its own can be replaced without becoming part of it
  /// for good, and replaces some.
  void MakeLongAndReplaceSome(RandomSource& random) {
    std::vector<AbsoluteIRI> listed;
    for (std::size_t number = 0; number < 64; ++number) {
      const std::string digits = std::to_string(number);
      listed.push_back(InMemory(u"/filler" + std::u16string(digits.begin(), digits.end())));
    }
    for (const auto& entry : *path_->GetMainEntries()) {
      listed.insert(listed.begin() + static_cast<std::ptrdiff_t>(random.Below(listed.size())), entry->GetAbsoluteIRI());
    }
    const auto own = *path_->GetMainEntries();
    path_ = ReadPath(listed);

    for (int version = 0; version < 3; ++version) {
      for (int file = 0; file < 10; ++file) AddFile(random, random.OneIn(2) ? storage_ : loose_);
      std::vector<std::shared_ptr<const FolderEntry>> replacing;
      for (const auto& entry : own) {
        if (random.OneIn(3)) replacing.push_back(ReadEntry(entry->GetAbsoluteIRI()));
      }
      path_ = path_->WithReplaced(replacing);
    }
  }

  [[nodiscard]] const FolderPath& GetPath() const { return *path_; }

  [[nodiscard]] PlainWalk Oracle() const {
    return {*path_->GetMainEntries(), [](const AbsoluteIRI& location) {
              const auto system = foundation::storage::vfs::VornixStorageSystem::GetStorageSystemReference();
              return system.ProviderFor(location)->CanonicalLocation(location);
            }};
  }

 private:
  static void AddFile(RandomSource& random, MemoryStorage& storage) {
    std::u16string folder = random.Pick(kMainFolders);
    for (std::size_t depth = random.Below(4); depth > 0; --depth) folder += u"/" + random.Pick(kSpecialNames);
    storage.WithFiles({folder + u"/" + random.Pick(kBaseNames) + random.Pick(kExtensions)});
  }

  MemoryStorage storage_;
  MemoryStorage loose_{NameComparison::IgnoreCase, u"loose"};
  std::shared_ptr<const FolderPath> path_;
};

// The questions of one round, put to a path and to its oracle.
class Questions {
 public:
  Questions(RandomSource& random, const FolderPath& path, const PlainWalk& oracle)
      : random_(random), path_(path), oracle_(oracle), kinds_(RandomKinds()), policy_(random.Pick(kPolicies)) {}

  void Ask() {
    SCOPED_TRACE("policy " + std::to_string(static_cast<int>(policy_)) + ", kinds " + testing::PrintToString(kinds_));
    AskForFiles();
    AskForFolders();
    AskForLocations();
  }

 private:
  [[nodiscard]] std::vector<PathEntryType> RandomKinds() {
    if (random_.OneIn(3)) return {std::begin(kKinds), std::end(kKinds)};
    return random_.ListOf(4, [this] { return kKinds[random_.Below(std::size(kKinds))]; });
  }
  [[nodiscard]] SearchScope Scope() const { return {kinds_.data(), kinds_.data() + kinds_.size()}; }

  [[nodiscard]] std::u16string RandomFolders() {
    std::u16string folders = random_.OneIn(3) ? u"/" : u"";
    for (const auto& name : random_.ListOf(3, [this] { return RandomFolderName(); })) {
      folders += name + (random_.OneIn(8) ? u"//" : u"/");
    }
    return folders;
  }
  [[nodiscard]] std::u16string RandomFolderName() {
    if (random_.OneIn(3)) return random_.Pick(kMainFolders).substr(1);
    const std::u16string& special = random_.Pick(kSpecialNames);
    return random_.OneIn(2) ? special : special.substr(1);
  }
  [[nodiscard]] std::u16string RandomName() {
    std::u16string folders = random_.OneIn(2) ? RandomFolders() : u"";
    if (random_.OneIn(20)) return folders;
    return folders + random_.Pick(kBaseNames) + (random_.OneIn(3) ? random_.Pick(kExtensions) : u"");
  }

  void AskForFiles() {
    const Wanted wanted{RandomName(), random_.ListOf(4, [this] { return random_.Pick(kExtensions); })};
    SCOPED_TRACE(testing::PrintToString(wanted.name) + " with " + testing::PrintToString(wanted.extensions));

    const auto first = path_.FindFirstInScope(Scope(), wanted.Target(), policy_);
    const auto expectedFirst = oracle_.FindFirst(Scope(), wanted.Target(), policy_);
    EXPECT_TRUE(first == expectedFirst) << Shown(first) << " instead of " << Shown(expectedFirst);

    const auto all = path_.FindAllInScope(Scope(), wanted.Target(), policy_);
    const auto expectedAll = oracle_.FindAll(Scope(), wanted.Target(), policy_);
    EXPECT_TRUE(all == expectedAll) << testing::PrintToString(AllShown(all)) << " instead of "
                                    << testing::PrintToString(AllShown(expectedAll));
  }

  void AskForFolders() {
    const std::u16string className = random_.OneIn(10) ? u"" : random_.Pick(kSpecialNames).substr(random_.Below(2));
    const std::u16string partial = RandomFolders();
    SCOPED_TRACE(testing::PrintToString(className) + " and " + testing::PrintToString(partial));

    Compare(path_.GetMethodEntriesByName(Scope(), className, policy_),
            oracle_.MethodEntriesByName(Scope(), className, policy_));
    Compare(path_.GetPartiallyMatchingEntries(Scope(), partial, policy_),
            oracle_.PartiallyMatchingEntries(Scope(), partial, policy_));
    Compare(Visited(), oracle_.Entries(Scope()));
  }

  void AskForLocations() {
    std::u16string folder = random_.Pick(kMainFolders);
    for (std::size_t depth = random_.Below(3); depth > 0; --depth) folder += u"/" + random_.Pick(kSpecialNames);
    const AbsoluteIRI location = InMemory(folder, random_.Pick(kSchemes));
    SCOPED_TRACE(Shown(location));

    Compare({path_.GetPathEntryFromAbsoluteIRI(location, policy_)}, {oracle_.EntryAt(location, policy_)});
    Compare({path_.GetPathEntryFromAbsoluteIRI(CanonicalAbsoluteIRI(location, u""))}, {oracle_.EntryAt(location)});
  }

  [[nodiscard]] std::vector<EntryPtr> Visited() const {
    std::vector<EntryPtr> visited;
    path_.ForEachEntry(Scope(), [&visited](const EntryPtr& entry) {
      visited.push_back(entry);
      return false;
    });
    return visited;
  }

  static void Compare(const std::vector<EntryPtr>& entries, const std::vector<EntryPtr>& expected) {
    EXPECT_TRUE(entries == expected) << testing::PrintToString(AllShown(entries)) << " instead of "
                                     << testing::PrintToString(AllShown(expected));
  }

  RandomSource& random_;
  const FolderPath& path_;
  const PlainWalk& oracle_;
  std::vector<PathEntryType> kinds_;
  FilenameMatchingPolicy policy_;
};

class FolderPathAgainstOracle : public testing::TestWithParam<NameComparison> {};

TEST_P(FolderPathAgainstOracle, AnswersAsAPlainWalkDoes) {
  RandomSource random = RandomSource::OfThisRun(20'261);
  std::cout << random.Describe() << '\n';
  SCOPED_TRACE(random.Describe());

  for (int tree = 0; tree < RandomSource::Rounds(40) && !HasFailure(); ++tree) {
    const RandomPath path(random, GetParam());
    const PlainWalk oracle = path.Oracle();
    for (int question = 0; question < 150 && !HasFailure(); ++question) {
      Questions(random, path.GetPath(), oracle).Ask();
    }
  }
}

TEST_P(FolderPathAgainstOracle, AnswersAsAPlainWalkDoesWhenFoldersWereReplaced) {
  RandomSource random = RandomSource::OfThisRun(20'262);
  SCOPED_TRACE(random.Describe());

  for (int tree = 0; tree < RandomSource::Rounds(30) && !HasFailure(); ++tree) {
    RandomPath path(random, GetParam());
    path.MakeLongAndReplaceSome(random);
    const PlainWalk oracle = path.Oracle();
    for (int question = 0; question < 60 && !HasFailure(); ++question) {
      Questions(random, path.GetPath(), oracle).Ask();
    }
  }
}

INSTANTIATE_TEST_SUITE_P(ForEachStorage, FolderPathAgainstOracle,
                         testing::Values(NameComparison::Exact, NameComparison::IgnoreCase),
                         [](const testing::TestParamInfo<NameComparison>& param) {
                           return param.param == NameComparison::Exact ? "TellingCasesApart" : "IgnoringCase";
                         });

}  // namespace
}  // namespace Quorvex::PathEnvironment
