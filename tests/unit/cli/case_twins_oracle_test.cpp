// Random trees: twins are what comparing every two names of one scope tells, and all that shadows tell of letter case.

#include <gmock/gmock.h>

#include <algorithm>
#include <fl/filesystem/case_folding.hpp>
#include <set>
#include <support/random_source.hpp>
#include <unit/environment/memory_storage.hpp>

#include "case_twins.hpp"
#include "shadow.hpp"
#include "told_findings.hpp"

namespace vornixpath {
namespace {

using fl::filesystem::fold_case;
using Quorvex::PathEnvironment::FolderPath;
using Quorvex::PathEnvironment::MemoryStorage;
using Quorvex::PathManagement::IPathEntry;
using Quorvex::PathManagement::support::RandomSource;

const std::vector<std::u16string> kTwinFolders = {u"/m", u"/n", u"/o"};

std::shared_ptr<const FolderPath> RandomTwins(RandomSource& random, MemoryStorage& storage) {
  const std::vector<std::u16string> below = {u"/+p", u"/+P", u"/@k", u"/@K", u"/+q", u"", u"", u"/private"};
  const std::vector<std::u16string> names = {u"/a.vnx", u"/A.vnx", u"/k.vnx", u"/K.vnx", u"/p.vnx", u"/b.txt"};
  storage.WithFolders(kTwinFolders);
  for (int file = 0; file < 14; ++file) {
    storage.WithFiles({random.Pick(kTwinFolders) + random.Pick(below) + random.Pick(below) + random.Pick(names)});
  }
  return storage.Path(kTwinFolders);
}

// A scope, letter case aside, and a name in it.
using ScopedName = std::pair<std::u16string, std::u16string>;

void Collect(const IPathEntry& entry, const std::u16string& scope, std::vector<ScopedName>& names) {
  const auto collectFiles = [&names](const IPathEntry& folder, const std::u16string& where) {
    const auto items = folder.GetItems();
    for (const auto& item : *items) {
      if (item->extension == u".vnx") names.emplace_back(where, item->baseName);
    }
  };
  collectFiles(entry, scope);
  if (const auto own = entry.GetPrivateEntry()) collectFiles(*own, own->GetAbsoluteIRI().toString());
  for (const auto& group : {entry.GetFirstEntryGroup(), entry.GetSecondEntryGroup()}) {
    for (const auto& below : *group) {
      const std::u16string name = below->GetAbsoluteIRI().getName().substr(1);
      names.emplace_back(scope, name);
      Collect(*below, scope + fold_case(name) + u"/", names);
    }
  }
}

std::vector<ScopedName> EveryScopedName(const FolderPath& path) {
  std::vector<ScopedName> names;
  const auto folders = path.GetMainEntries();
  for (const auto& folder : *folders) Collect(*folder, u"", names);
  return names;
}

// Each group by its folded name behind its scope, with the number of spellings.
std::multiset<std::pair<std::u16string, std::size_t>> GroupsByComparing(const std::vector<ScopedName>& names) {
  std::set<ScopedName> folded;
  for (const auto& [scope, name] : names) folded.emplace(scope, fold_case(name));
  std::multiset<std::pair<std::u16string, std::size_t>> groups;
  for (const auto& [scope, common] : folded) {
    std::set<std::u16string> spellings;
    for (const auto& [otherScope, name] : names) {
      if (otherScope == scope && fold_case(name) == common) spellings.insert(name);
    }
    const bool isPrivate = scope.starts_with(u"memory:");
    if (spellings.size() > 1) groups.emplace((isPrivate ? u"" : scope) + common, spellings.size());
  }
  return groups;
}

TEST(LetterCaseTwinsAgainstEveryTwoNames, AreWhatComparingThemTells) {
  RandomSource random = RandomSource::OfThisRun(20'931);
  SCOPED_TRACE(random.Describe());
  std::size_t found = 0;
  for (int tree = 0; tree < RandomSource::Rounds(400) && !HasFailure(); ++tree) {
    MemoryStorage storage;
    const auto path = RandomTwins(random, storage);

    std::multiset<std::pair<std::u16string, std::size_t>> groups;
    for (const Finding& twins : LetterCaseTwins(Examination(path).Get())) {
      groups.emplace(fold_case(*twins.name), twins.places.size());
    }

    EXPECT_EQ(groups, GroupsByComparing(EveryScopedName(*path)));
    found += groups.size();
  }
  EXPECT_GT(found, static_cast<std::size_t>(RandomSource::Rounds(400))) << "the trees hold too few twins";
}

// What competes in letter case is a twin itself, or stands in a folder that is.
TEST(LetterCaseTwinsAgainstEveryTwoNames, LeaveOutNothingThatShadowsTellOfLetterCase) {
  RandomSource random = RandomSource::OfThisRun(20'932);
  SCOPED_TRACE(random.Describe());
  std::size_t compared = 0;
  for (int tree = 0; tree < RandomSource::Rounds(200) && !HasFailure(); ++tree) {
    MemoryStorage storage;
    const auto path = RandomTwins(random, storage);
    const std::vector<Finding> twins = LetterCaseTwins(Examination(path).Get());
    for (const Shadow& shadow : FindShadows(*path, {u".vnx"})) {
      if (shadow.likeness != Likeness::OtherLetterCase) continue;
      ++compared;
      EXPECT_TRUE(std::any_of(twins.begin(), twins.end(),
                              [&](const Finding& finding) {
                                return (fold_case(shadow.name) + u"/").starts_with(fold_case(*finding.name) + u"/");
                              }))
          << "nothing is told of the names of " << fl::filesystem::to_displayed_text(shadow.name);
    }
  }
  EXPECT_GT(compared, static_cast<std::size_t>(RandomSource::Rounds(200)));
}

}  // namespace
}  // namespace vornixpath
