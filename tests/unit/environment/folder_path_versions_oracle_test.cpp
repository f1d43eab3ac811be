// Long paths of which folders are replaced at random, again and again: each version answers as a fresh path over the
// same entries does.

#include <gmock/gmock.h>

#include <iostream>
#include <search_path_environment/folder_path.hpp>
#include <support/random_source.hpp>

#include "made_entry.hpp"
#include "shown.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using foundation::storage::vfs::CanonicalAbsoluteIRI;
using PathManagement::support::RandomSource;

// Few, so that names meet.
const std::vector<std::u16string> kBaseNames = {u"a", u"A", u"b", u"ab", u"a.b", u".h", u"SS", u"\u00DF"};
const std::vector<std::u16string> kExtensions = {u".x", u".X", u".y", u"", u".x.y"};
const std::vector<std::u16string> kNames = {u"a", u"A", u"b", u"ab"};
const std::vector<FilenameMatchingPolicy> kPolicies = {kCaseSensitive, kCaseInsensitive, kNative};

class ChangingPath {
 public:
  ChangingPath(RandomSource& random, std::size_t length) : random_(random) {
    std::vector<FolderPath::Folder> folders;
    for (std::size_t position = 0; position < length; ++position) {
      entries_.push_back(RandomEntry(position));
      folders.push_back({entries_.back(), position});
    }
    path_ = std::make_shared<const FolderPath>(folders, std::vector<PathProblem>());
  }

  void ReplaceSome() {
    std::vector<FolderEntryPtr> replacing;
    // Mostly one, now and then many; some folders much more often than others.
    for (std::size_t count = random_.OneIn(20) ? random_.Below(12) : 1; count > 0; --count) {
      const std::size_t position = random_.Below(random_.OneIn(2) ? entries_.size() : 5);
      entries_[position] = RandomEntry(position);
      replacing.push_back(entries_[position]);
    }
    path_ = path_->WithReplaced(replacing);
  }

  [[nodiscard]] const FolderPath& Get() const { return *path_; }
  [[nodiscard]] std::shared_ptr<const FolderPath> Fresh() const {
    std::vector<FolderPath::Folder> folders;
    folders.reserve(entries_.size());
    for (const auto& entry : entries_) folders.push_back({entry, folders.size()});
    return std::make_shared<const FolderPath>(folders, std::vector<PathProblem>());
  }
  [[nodiscard]] AbsoluteIRI RandomLocation() {
    std::u16string iri = LocationOf(random_.Below(entries_.size()));
    if (random_.OneIn(4)) iri = u"memory:///really" + iri.substr(std::u16string_view(u"memory://").size());
    if (random_.OneIn(2)) iri += random_.OneIn(2) ? u"/@" + random_.Pick(kNames) : u"/private";
    return AbsoluteIRI(iri);
  }

 private:
  static std::u16string LocationOf(std::size_t position) {
    const std::string digits = std::to_string(position);
    return u"memory:///d" + std::u16string(digits.begin(), digits.end());
  }

  FolderEntryPtr RandomEntry(std::size_t position) {
    const std::u16string location = LocationOf(position);
    MadeEntry made(location);
    made.WithFiles(RandomFiles());
    if (random_.OneIn(4)) made.Canonically(u"memory:///really" + location.substr(9));
    if (random_.OneIn(50)) made.IgnoringCase();
    if (random_.OneIn(4)) {
      made.WithPrivate(
          MadeEntry(location + u"/private").OfKind(PathEntryType::Private).WithFiles(RandomFiles()).Create());
    }
    if (random_.OneIn(4)) made.WithClass(MadeClass(location + u"/@" + random_.Pick(kNames), RandomFiles()));
    if (random_.OneIn(4)) {
      const std::u16string package = location + u"/+" + random_.Pick(kNames);
      made.WithPackage(MadeEntry(package)
                           .OfKind(PathEntryType::Package)
                           .WithFiles(RandomFiles())
                           .WithClass(MadeClass(package + u"/@" + random_.Pick(kNames), RandomFiles()))
                           .Create());
    }
    return made.Create();
  }

  std::vector<std::u16string> RandomFiles() {
    std::vector<std::u16string> files =
        random_.ListOf(3, [this] { return random_.Pick(kBaseNames) + random_.Pick(kExtensions); });
    std::sort(files.begin(), files.end());
    files.erase(std::unique(files.begin(), files.end()), files.end());
    return files;
  }

  RandomSource& random_;
  std::vector<FolderEntryPtr> entries_;
  std::shared_ptr<const FolderPath> path_;
};

std::vector<EntryPtr> Visited(const FolderPath& path, SearchScope scope) {
  std::vector<EntryPtr> visited;
  path.ForEachEntry(scope, [&visited](const EntryPtr& entry) {
    visited.push_back(entry);
    return false;
  });
  return visited;
}

void CompareFiles(const FolderPath& path, const FolderPath& fresh, SearchScope scope, FilenameMatchingPolicy policy,
                  RandomSource& random) {
  std::u16string name = random.Pick(kBaseNames);
  if (random.OneIn(3)) name = random.Pick(kNames) + u"/" + name;
  const Wanted wanted{name, random.ListOf(3, [&] { return random.Pick(kExtensions); })};
  SCOPED_TRACE(testing::PrintToString(wanted.name) + " with " + testing::PrintToString(wanted.extensions));

  EXPECT_TRUE(path.FindFirstInScope(scope, wanted.Target(), policy) ==
              fresh.FindFirstInScope(scope, wanted.Target(), policy));
  EXPECT_TRUE(path.FindAllInScope(scope, wanted.Target(), policy) ==
              fresh.FindAllInScope(scope, wanted.Target(), policy));
}

void CompareFolders(ChangingPath& changing, const FolderPath& fresh, SearchScope scope, FilenameMatchingPolicy policy,
                    RandomSource& random) {
  const FolderPath& path = changing.Get();
  const std::u16string name = random.Pick(kNames);
  const std::u16string partial = (random.OneIn(2) ? random.Pick(kNames) + u"/" : u"") + random.Pick(kNames);
  const AbsoluteIRI location = changing.RandomLocation();
  const CanonicalAbsoluteIRI canonical(location, u"");
  SCOPED_TRACE(testing::PrintToString(name) + ", " + testing::PrintToString(partial) + ", " + Shown(location));

  EXPECT_EQ(path.GetMethodEntriesByName(scope, name, policy), fresh.GetMethodEntriesByName(scope, name, policy));
  EXPECT_EQ(path.GetPartiallyMatchingEntries(scope, partial, policy),
            fresh.GetPartiallyMatchingEntries(scope, partial, policy));
  EXPECT_EQ(path.GetPathEntryFromAbsoluteIRI(location, policy), fresh.GetPathEntryFromAbsoluteIRI(location, policy));
  EXPECT_EQ(path.GetPathEntryFromAbsoluteIRI(canonical), fresh.GetPathEntryFromAbsoluteIRI(canonical));
}

void CompareLists(const FolderPath& path, const FolderPath& fresh, SearchScope scope) {
  EXPECT_EQ(*path.GetMainEntries(), *fresh.GetMainEntries());
  EXPECT_EQ(path.GetMethodEntries(), fresh.GetMethodEntries());
  EXPECT_EQ(Visited(path, scope), Visited(fresh, scope));
}

// What is asked about an entry: any of the fresh path, and one that a former version had, which may be gone.
void CompareAnswersAbout(const EntryPtr& entry, const EntryPtr& other, const FolderPath& path,
                         const FolderPath& fresh) {
  EXPECT_EQ(path.IsEntryOnPath(*entry), fresh.IsEntryOnPath(*entry));
  EXPECT_EQ(path.GetMainEntryForEntry(*entry), fresh.GetMainEntryForEntry(*entry));
  EXPECT_EQ(path.GetParentEntryForEntry(*entry), fresh.GetParentEntryForEntry(*entry));
  EXPECT_EQ(path.FirstEntryIsBeforeSecondOnPath(*entry, *other), fresh.FirstEntryIsBeforeSecondOnPath(*entry, *other));
}

TEST(VersionsOfAPath, AnswerAsAFreshPathDoesAfterThousandsOfReplacements) {
  RandomSource random = RandomSource::OfThisRun(20'263);
  std::cout << random.Describe() << '\n';
  SCOPED_TRACE(random.Describe());
  ChangingPath changing(random, 400);  // up to 25 folders stand apart from the base
  std::vector<EntryPtr> former = Visited(changing.Get(), kEveryKind);

  for (int version = 0; version < RandomSource::Rounds(4'000) && !testing::Test::HasFailure(); ++version) {
    changing.ReplaceSome();
    if (!random.OneIn(5)) continue;

    SCOPED_TRACE("version " + std::to_string(version));
    const auto fresh = changing.Fresh();
    const SearchScope scope = random.OneIn(2) ? kEveryKind : Only(random.Pick(std::vector(kKinds, kKinds + 6)));
    const FilenameMatchingPolicy policy = random.Pick(kPolicies);
    for (int i = 0; i < 10; ++i) CompareFiles(changing.Get(), *fresh, scope, policy, random);
    for (int i = 0; i < 3; ++i) CompareFolders(changing, *fresh, scope, policy, random);
    CompareLists(changing.Get(), *fresh, scope);
    const std::vector<EntryPtr> present = Visited(*fresh, kEveryKind);
    for (int i = 0; i < 20; ++i) {
      CompareAnswersAbout(random.Pick(random.OneIn(2) ? present : former), random.Pick(present), changing.Get(),
                          *fresh);
    }
    if (random.OneIn(10)) former = present;
  }
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
