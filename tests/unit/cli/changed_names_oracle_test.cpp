// Random pairs of paths: the names that mean another file are those that asking for every name on both paths tells.

#include <gmock/gmock.h>

#include <map>
#include <search_path_utilities/lookup.hpp>
#include <set>
#include <support/random_source.hpp>
#include <unit/environment/memory_storage.hpp>

#include "changed_names.hpp"
#include "file_location.hpp"
#include "read_after.hpp"

namespace vornixpath {
namespace {

using Quorvex::PathEnvironment::FolderPath;
using Quorvex::PathEnvironment::MemoryStorage;
using Quorvex::PathEnvironment::NameComparison;
using Quorvex::PathManagement::ComparisonFilter;
using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::FindFirstFileVisibleOnPath;
using Quorvex::PathManagement::PathEntryType;
using Quorvex::PathManagement::support::RandomSource;

const std::vector<std::u16string> kTried = {u".x", u".y"};
const std::vector<std::u16string> kBaseNames = {u"a", u"A", u"b", u"K", u"a.b", u".h"};
const std::vector<std::u16string> kExtensions = {u".x", u".x", u".y", u".z"};
const std::vector<std::u16string> kPackages = {u"+a", u"+A", u"+b", u"+K"};
const std::vector<std::u16string> kInnermost = {u"", u"", u"/@a", u"/@K", u"/@A", u"/private", u"/resources"};
const std::vector<std::u16string> kFolders = {u"/m", u"/n", u"/o", u"/x/a", u"/x/a/K", u"/m/+a", u"/n/@K"};

std::u16string RandomFile(RandomSource& random) {
  std::u16string folder = random.Pick(kFolders);
  for (std::size_t depth = random.Below(3); depth > 0; --depth) folder += u"/" + random.Pick(kPackages);
  return folder + random.Pick(kInnermost) + u"/" + random.Pick(kBaseNames) + random.Pick(kExtensions);
}

void AddFiles(std::size_t count, RandomSource& random, MemoryStorage& storage) {
  for (; count > 0; --count) storage.WithFiles({RandomFile(random)});
}

using Folders = std::vector<std::u16string>;

Folders RandomFolders(RandomSource& random) {
  Folders folders = random.ListOf(6, [&] { return random.Pick(kFolders); });
  if (folders.empty()) folders = kFolders;
  return folders;
}

// Most of the time a few edits of what was there.
Folders Edited(Folders folders, RandomSource& random) {
  if (random.OneIn(4)) return RandomFolders(random);
  if (!random.OneIn(3)) folders.insert(folders.begin(), random.Pick(kFolders));
  if (random.OneIn(2)) folders.pop_back();
  return folders;
}

/// Names as people type them, and what they mean, asked for one after another.
class EveryName {
 public:
  void AddNamesOn(const FolderPath& path) {
    const auto folders = path.GetMainEntries();
    for (const auto& folder : *folders) Collect(*folder, u"");
  }

  [[nodiscard]] std::vector<std::string> Changed(const FolderPath& before, const FolderPath& after) const {
    std::vector<std::string> changed;
    for (const std::u16string& name : names_) {
      const ChangedName candidate{name, FileFor(name, before), FileFor(name, after)};
      if (candidate.before != candidate.after) changed.push_back(InWords(candidate));
    }
    return changed;
  }

 private:
  void Collect(const Quorvex::PathManagement::IPathEntry& entry, const std::u16string& folders) {
    const auto items = entry.GetItems();
    for (const auto& item : *items) AddNames(entry, item->baseName + item->extension, folders);
    for (const auto& group : {entry.GetFirstEntryGroup(), entry.GetSecondEntryGroup()}) {
      for (const auto& below : *group) Collect(*below, folders + below->GetAbsoluteIRI().getName().substr(1) + u"/");
    }
  }

  void AddNames(const Quorvex::PathManagement::IPathEntry& entry, const std::u16string& fullName,
                const std::u16string& folders) {
    for (const std::u16string& extension : kTried) {
      if (!fullName.ends_with(extension) || fullName.size() == extension.size()) continue;
      const std::u16string base = fullName.substr(0, fullName.size() - extension.size());
      const std::u16string typed = base.find(u'.', 1) == std::u16string::npos ? base : fullName;
      const bool isSameName = (*entry.GetFilenameComparator(FilenameMatchingPolicy::Native))(base + u"/", folders);
      const bool answersForClass = entry.GetEntryType() == PathEntryType::Class && isSameName;
      names_.insert(answersForClass ? typed : folders + typed);
    }
  }

  static std::optional<foundation::storage::vfs::AbsoluteIRI> FileFor(const std::u16string& name,
                                                                      const FolderPath& path) {
    const auto target = Quorvex::PathManagement::CreateSearchTargetWithExtensionInFilenamePreferred(name, kTried);
    const auto found = FindFirstFileVisibleOnPath(path, target, FilenameMatchingPolicy::Native);
    if (!found) return std::nullopt;
    return LocationOf(*found);
  }

  std::set<std::u16string> names_;
};

// How many names changed between a random path and what became of it.
std::size_t CompareOnce(RandomSource& random, NameComparison comparison) {
  MemoryStorage storage(comparison);
  storage.WithFolders(kFolders);
  AddFiles(40, random, storage);
  const Folders folders = RandomFolders(random);
  const auto before = storage.Path(folders);
  AddFiles(random.Below(4), random, storage);
  const auto after = ReadAfter(*before, Edited(folders, random));

  std::vector<std::string> changed;
  const auto changes = ChangesBetween(*before, *after, ComparisonFilter::MainEntriesOnly);
  for (const ChangedName& name : ChangedNames(*before, *after, changes, kTried)) changed.push_back(InWords(name));

  EveryName everyName;
  everyName.AddNamesOn(*before);
  everyName.AddNamesOn(*after);
  EXPECT_EQ(changed, everyName.Changed(*before, *after));
  return changed.size();
}

TEST(ChangedNamesAgainstEveryName, AreWhatAskingForEveryNameOnBothPathsTells) {
  RandomSource random = RandomSource::OfThisRun(20'271);
  SCOPED_TRACE(random.Describe());
  std::size_t changed = 0;
  for (int pair = 0; pair < RandomSource::Rounds(400) && !HasFailure(); ++pair) {
    changed += CompareOnce(random, NameComparison::Exact);
  }
  EXPECT_GT(changed, static_cast<std::size_t>(RandomSource::Rounds(1'000))) << "too little changes to show anything";
}

TEST(ChangedNamesAgainstEveryName, AreTheSameWhereLetterCaseMakesNoDifference) {
  RandomSource random = RandomSource::OfThisRun(20'272);
  SCOPED_TRACE(random.Describe());
  std::size_t changed = 0;
  for (int pair = 0; pair < RandomSource::Rounds(400) && !HasFailure(); ++pair)
    changed += CompareOnce(random, NameComparison::IgnoreCase);
  EXPECT_GT(changed, static_cast<std::size_t>(RandomSource::Rounds(1'000))) << "too little changes to show anything";
}

}  // namespace
}  // namespace vornixpath
