// Random trees: what is hidden is what asking for every name, one after another, tells.

#include <gmock/gmock.h>

#include <algorithm>
#include <fl/filesystem/case_folding.hpp>
#include <map>
#include <search_path_utilities/lookup.hpp>
#include <set>
#include <support/random_source.hpp>
#include <unit/environment/memory_storage.hpp>

#include "shadow_finding.hpp"

namespace vornixpath {
namespace {

using foundation::storage::vfs::AbsoluteIRI;
using Quorvex::PathEnvironment::FolderPath;
using Quorvex::PathEnvironment::MemoryStorage;
using Quorvex::PathEnvironment::NameComparison;
using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::FindFirstFileVisibleOnPath;
using Quorvex::PathManagement::FoundItem;
using Quorvex::PathManagement::MainScope;
using Quorvex::PathManagement::PathEntryType;
using Quorvex::PathManagement::VisibleScope;
using Quorvex::PathManagement::support::RandomSource;

constexpr auto kNative = FilenameMatchingPolicy::Native;
const std::vector<std::u16string> kTried = {u".x", u".y"};
const std::vector<std::u16string> kTriedWithNone = {u".x", u""};
const std::vector<std::u16string> kBaseNames = {u"a", u"A", u"b", u"K", u"a.b", u".h", u"\u00DF", u"SS"};
const std::vector<std::u16string> kExtensions = {u".x", u".x", u".y", u".X", u".z"};
const std::vector<std::u16string> kWithoutExtension = {u".h", u".H"};
const std::vector<std::u16string> kPackages = {u"+a", u"+A", u"+b", u"+K", u"+a"};
const std::vector<std::u16string> kInnermost = {u"", u"", u"/@a", u"/@K", u"/@A", u"/@K", u"/private", u"/resources"};
const std::vector<std::u16string> kFolders = {u"/m",     u"/n",    u"/o",    u"/x/a",
                                              u"/x/a/K", u"/m/+a", u"/n/@K", u"/x/private"};

std::shared_ptr<const FolderPath> RandomPath(RandomSource& random, MemoryStorage& storage) {
  storage.WithFolders(kFolders);
  for (int file = 0; file < 40; ++file) {
    std::u16string folder = random.Pick(kFolders);
    for (std::size_t depth = random.Below(3); depth > 0; --depth) folder += u"/" + random.Pick(kPackages);
    folder += random.Pick(kInnermost);
    const std::u16string name =
        random.OneIn(8) ? random.Pick(kWithoutExtension) : random.Pick(kBaseNames) + random.Pick(kExtensions);
    storage.WithFiles({folder + u"/" + name});
  }
  return storage.Path(random.ListOf(6, [&] { return random.Pick(kFolders); }));
}

/// Asks for every name.
class EveryName {
 public:
  EveryName(const FolderPath& path, const std::vector<std::u16string>& tried) : path_(path), tried_(tried) {
    const auto folders = path.GetMainEntries();
    for (const auto& folder : *folders) Collect(folder, u"");
    for (const std::u16string& name : names_) byFoldedName_[fl::filesystem::fold_case(name)].push_back(name);
  }

  [[nodiscard]] std::set<std::string> Hidden() const {
    std::set<std::string> hidden;
    for (const auto& [folded, names] : byFoldedName_) {
      const auto meanings = MeaningsOf(names);
      for (const auto& [name, files] : meanings) AddFiles(name, files, hidden);
      if (!meanings.empty()) AddLetterCase(meanings, hidden);
      AddFolders(folded, meanings, hidden);
    }
    return hidden;
  }

 private:
  using Meaning = std::pair<std::u16string, std::vector<FoundItem>>;

  void Collect(const EntryPtr& entry, const std::u16string& folders) {
    const auto items = entry->GetItems();
    for (const auto& item : *items) AddNames(*entry, *item, folders);
    for (const auto& group : {entry->GetFirstEntryGroup(), entry->GetSecondEntryGroup()}) {
      for (const auto& below : *group) {
        const std::u16string name = folders + below->GetAbsoluteIRI().getName().substr(1);
        special_.emplace_back(name, below);
        Collect(below, name + u"/");
      }
    }
  }

  void AddNames(const Quorvex::PathManagement::IPathEntry& entry, const Quorvex::PathManagement::PathItem& item,
                const std::u16string& folders) {
    const std::u16string fullName = item.baseName + item.extension;
    for (const std::u16string& extension : tried_) {
      if (!fullName.ends_with(extension) || fullName.size() == extension.size()) continue;
      const std::u16string base = fullName.substr(0, fullName.size() - extension.size());
      const auto target = Quorvex::PathManagement::CreateSearchTargetWithExtensionInFilenamePreferred(base, tried_);
      const bool areAllTried = target.GetExtensions() == tried_;
      if (!areAllTried && extension.empty()) continue;  // to whoever types it, it has another extension
      const std::u16string typed = areAllTried ? base : fullName;
      const bool answersForClass = entry.GetEntryType() == PathEntryType::Class && folders == base + u"/";
      names_.insert(answersForClass ? typed : folders + typed);
    }
  }

  [[nodiscard]] std::vector<FoundItem> FilesOf(const std::u16string& name) const {
    const auto target = Quorvex::PathManagement::CreateSearchTargetWithExtensionInFilenamePreferred(name, tried_);
    const bool isPlain = name.find(u'/') == std::u16string::npos;
    std::vector<FoundItem> files = path_.FindAllInScope(isPlain ? MainScope : VisibleScope, target, kNative);
    if (isPlain) {
      for (const auto& folder : path_.GetMethodEntriesByName(MainScope, target.GetBaseName(), kNative)) {
        const auto items = folder->GetItems();
        for (const std::u16string& extension : target.GetExtensions()) {
          for (const auto& item : *items) {
            if (item->baseName + item->extension == target.GetBaseName() + extension) files.emplace_back(item, folder);
          }
        }
      }
    }
    const auto winner = FindFirstFileVisibleOnPath(path_, target, kNative);
    if (winner) files.insert(files.begin(), *winner);
    return files;
  }

  [[nodiscard]] std::vector<Meaning> MeaningsOf(const std::vector<std::u16string>& names) const {
    std::vector<Meaning> meanings;
    for (const std::u16string& name : names) {
      auto files = FilesOf(name);
      if (!files.empty()) meanings.emplace_back(name, std::move(files));
    }
    std::stable_sort(meanings.begin(), meanings.end(), [this](const Meaning& left, const Meaning& right) {
      return path_.FirstEntryIsBeforeSecondOnPath(*left.second[0].GetPathEntry(), *right.second[0].GetPathEntry());
    });
    return meanings;
  }

  static void Add(const std::u16string& name, const FoundItem& winner, const EntryPtr& entry,
                  const AbsoluteIRI& location, Likeness likeness, std::set<std::string>& hidden) {
    if (LocationOf(winner) == location) return;
    hidden.insert(InWords(Shadow{name, winner, entry, location, likeness}));
  }

  void AddFiles(const std::u16string& name, const std::vector<FoundItem>& files, std::set<std::string>& hidden) const {
    const FoundItem& winner = files.front();
    std::set<std::u16string> told;  // a location by its first entry
    for (const FoundItem& file : files) {
      if (!told.insert(LocationOf(file).toString()).second) continue;
      if (file.GetPathItem()->folderIRI == winner.GetPathItem()->folderIRI) continue;
      const bool isSameKind = file.GetPathEntry()->GetEntryType() == winner.GetPathEntry()->GetEntryType();
      Add(name, winner, file.GetPathEntry(), LocationOf(file), isSameKind ? Likeness::SameName : Likeness::OtherKind,
          hidden);
    }
  }

  static void AddLetterCase(const std::vector<Meaning>& meanings, std::set<std::string>& hidden) {
    const auto& [name, files] = meanings.front();
    for (const Meaning& other : meanings) {
      const FoundItem& winner = other.second.front();
      if (std::find(files.begin(), files.end(), winner) != files.end()) continue;
      Add(name, files.front(), winner.GetPathEntry(), LocationOf(winner), Likeness::OtherLetterCase, hidden);
    }
  }

  void AddFolders(const std::u16string& folded, const std::vector<Meaning>& meanings,
                  std::set<std::string>& hidden) const {
    for (const auto& [name, folder] : special_) {
      if (meanings.empty() || fl::filesystem::fold_case(name) != folded) continue;
      const Meaning* hiding = &meanings.front();
      bool isTold = false;
      bool isSameName = false;
      for (const Meaning& meaning : meanings) {
        if (meaning.first == name) {
          hiding = &meaning;
          isSameName = true;
        }
        for (const FoundItem& file : meaning.second) isTold = isTold || file.GetPathEntry() == folder;
      }
      const bool areClasses = folder->GetEntryType() == PathEntryType::Class &&
                              name.find(u'/') == std::u16string::npos &&
                              hiding->second[0].GetPathEntry()->GetEntryType() == PathEntryType::Class;
      if (isTold || areClasses) continue;
      Add(hiding->first, hiding->second[0], folder, folder->GetAbsoluteIRI(),
          isSameName ? Likeness::OtherKind : Likeness::OtherLetterCase, hidden);
    }
  }

  const FolderPath& path_;
  std::vector<std::u16string> tried_;
  std::set<std::u16string> names_;
  std::map<std::u16string, std::vector<std::u16string>> byFoldedName_;
  std::vector<std::pair<std::u16string, EntryPtr>> special_;
};

TEST(ShadowsAgainstEveryName, AreWhatAskingForEveryNameTells) {
  RandomSource random = RandomSource::OfThisRun(20'263);
  SCOPED_TRACE(random.Describe());
  std::size_t found = 0;
  for (int tree = 0; tree < RandomSource::Rounds(600) && !HasFailure(); ++tree) {
    MemoryStorage storage;
    const auto path = RandomPath(random, storage);
    const auto& tried = random.OneIn(2) ? kTried : kTriedWithNone;
    const std::vector<std::string> shadows = Hidden(*path, tried);

    const std::set<std::string> distinct(shadows.begin(), shadows.end());
    EXPECT_EQ(distinct.size(), shadows.size()) << "something is told twice";
    EXPECT_EQ(distinct, EveryName(*path, tried).Hidden());
    found += shadows.size();
  }
  EXPECT_GT(found, static_cast<std::size_t>(RandomSource::Rounds(1'000)))
      << "the trees hide too little to show anything";
}

// Of each name, which file it means and what other file it may mean; where letter case makes no difference, names that
// mean the same are one.
TEST(ShadowsAgainstEveryName, HideTheSameFilesWhereLetterCaseMakesNoDifference) {
  RandomSource random = RandomSource::OfThisRun(20'265);
  SCOPED_TRACE(random.Describe());
  for (int tree = 0; tree < RandomSource::Rounds(200) && !HasFailure(); ++tree) {
    MemoryStorage storage(NameComparison::IgnoreCase);
    const auto path = RandomPath(random, storage);
    const auto& tried = random.OneIn(2) ? kTried : kTriedWithNone;
    for (const Shadow& shadow : FindShadows(*path, tried)) {
      SCOPED_TRACE(InWords(shadow));
      const auto target =
          Quorvex::PathManagement::CreateSearchTargetWithExtensionInFilenamePreferred(shadow.name, tried);
      const auto winner = FindFirstFileVisibleOnPath(*path, target, kNative);
      ASSERT_TRUE(winner);
      EXPECT_EQ(LocationOf(*winner), LocationOf(shadow.winner));
      EXPECT_NE(shadow.likeness, Likeness::OtherLetterCase);
    }
  }
}

}  // namespace
}  // namespace vornixpath
