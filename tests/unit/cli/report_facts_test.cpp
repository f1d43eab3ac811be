// What a report tells of a path: its ladder, its names, and what of it is slow.

#include <gmock/gmock.h>

#include <atomic>
#include <fakes/forwarding_storage_provider.hpp>
#include <fl/filesystem/displayed_text.hpp>
#include <map>
#include <search_path_environment/folder_entry_factory.hpp>
#include <unit/environment/memory_storage.hpp>

#include "path_findings.hpp"
#include "path_troubles.hpp"
#include "report_ladder.hpp"
#include "report_names.hpp"
#include "report_shadow_graph.hpp"
#include "report_slowest.hpp"
#include "shadow_arcs.hpp"

namespace vornixpath {
namespace {

using foundation::storage::fakes::ForwardingStorageProvider;
using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::FolderListing;
using foundation::storage::vfs::IStorageProvider;
using foundation::storage::vfs::VornixStorageSystem;
using Quorvex::PathEnvironment::FolderEntryFactory;
using Quorvex::PathEnvironment::InMemory;
using Quorvex::PathEnvironment::MemoryStorage;
using Quorvex::PathEnvironment::PathProblem;
using std::chrono::microseconds;
using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using Texts = std::vector<std::string>;

std::vector<AbsoluteIRI> Locations(const std::vector<std::u16string>& folders) {
  std::vector<AbsoluteIRI> locations;
  for (const std::u16string& folder : folders) locations.push_back(InMemory(folder));
  return locations;
}

/// A path with all that is known of it.
class Known {
 public:
  explicit Known(const std::vector<std::u16string>& folders, const std::vector<std::u16string>& masks = {})
      : path_(Locations(folders), Locations(masks)),
        numbers_(path_.GetLeaf()),
        examined_{path_.GetView(), numbers_, {u".vnx"}},
        troubles_(TroublesOf(path_)),
        shadows_(ShadowsOf(examined_)) {}
  Known(const Known&) = delete;
  Known& operator=(const Known&) = delete;

  [[nodiscard]] KnownPath Get() const { return {path_, examined_, troubles_, shadows_}; }
  [[nodiscard]] const std::vector<ShadowPair>& GetShadows() const { return shadows_; }

 private:
  LoadedPath path_;
  FolderNumbers numbers_;
  ExaminedPath examined_;
  std::vector<PathProblem> troubles_;
  std::vector<ShadowPair> shadows_;
};

// "2 present: 3 files, 1 package, 0 classes, 1 hidden, hides 2".
std::string InWords(const Rung& rung) {
  return std::to_string(rung.number) + ' ' + rung.state.word + ": " + std::to_string(rung.files) + " files, " +
         std::to_string(rung.packages) + " packages, " + std::to_string(rung.classes) + " classes, " +
         std::to_string(rung.hidden) + " hidden, hides " + std::to_string(rung.hides);
}

Texts LadderInWords(const Known& known) {
  Texts texts;
  for (const Rung& rung : LadderOf(known.Get())) texts.push_back(InWords(rung));
  return texts;
}

TEST(Ladder, HasARungForEachFolderOfThePathAsItWasGiven) {
  const MemoryStorage storage = std::move(MemoryStorage().WithFiles({u"/a/f.vnx", u"/b/f.vnx", u"/c/f.vnx"}));
  const Known known({u"/a", u"/none", u"/b", u"/a", u"/c/f.vnx", u"/c"}, {u"/b"});

  EXPECT_THAT(LadderInWords(known), ElementsAre("1 present: 1 files, 0 packages, 0 classes, 0 hidden, hides 1",
                                                "2 missing: 0 files, 0 packages, 0 classes, 0 hidden, hides 0",
                                                "3 masked: 0 files, 0 packages, 0 classes, 0 hidden, hides 0",
                                                "4 repeated: 0 files, 0 packages, 0 classes, 0 hidden, hides 0",
                                                "5 missing: 0 files, 0 packages, 0 classes, 0 hidden, hides 0",
                                                "6 present: 1 files, 0 packages, 0 classes, 1 hidden, hides 0"));
}

TEST(Ladder, CountsFilesThatOfferANameInPackagesAndClassesTooButNotPrivateOnes) {
  const MemoryStorage storage = std::move(MemoryStorage().WithFiles(
      {u"/a/f.vnx", u"/a/notes.txt", u"/a/+p/g.vnx", u"/a/+p/+q/h.vnx", u"/a/@K/K.vnx", u"/a/private/x.vnx"}));

  EXPECT_THAT(LadderInWords(Known({u"/a"})),
              ElementsAre("1 present: 4 files, 2 packages, 1 classes, 0 hidden, hides 0"));
}

TEST(Ladder, AgreesWithWhatShadowsTells) {
  const MemoryStorage storage =
      std::move(MemoryStorage().WithFiles({u"/a/f.vnx", u"/a/g.vnx", u"/a/@K/K.vnx", u"/b/f.vnx", u"/b/K.vnx",
                                           u"/b/h.vnx", u"/c/f.vnx", u"/c/h.vnx", u"/c/k.vnx", u"/a/k.vnx"}));
  const Known known({u"/a", u"/b", u"/c"});

  std::map<std::size_t, std::size_t> hidden;
  std::map<std::size_t, std::size_t> hides;
  for (const ShadowPair& pair : known.GetShadows()) {
    hidden[pair.hidden.number] += CountNames(pair);
    if (pair.hiding != pair.hidden) hides[pair.hiding.number] += CountNames(pair);
  }
  ASSERT_FALSE(known.GetShadows().empty());
  for (const Rung& rung : LadderOf(known.Get())) {
    EXPECT_EQ(rung.hidden, hidden[rung.number]) << InWords(rung);
    EXPECT_EQ(rung.hides, hides[rung.number]) << InWords(rung);
  }
  EXPECT_EQ(LadderInWords(known)[1], "2 present: 3 files, 0 packages, 0 classes, 2 hidden, hides 1");
}

TEST(ReportedNames, AreWhatPeopleTypeEachWithItsFileAndWhereElseItStands) {
  const MemoryStorage storage = std::move(MemoryStorage().WithFiles(
      {u"/a/@K/K.vnx", u"/a/+p/g.vnx", u"/b/K.vnx", u"/b/f.vnx", u"/b/F.vnx", u"/c/f.vnx", u"/d/f.vnx"}));
  const Known known({u"/a", u"/b", u"/c", u"/d"});

  const auto place = [](std::size_t number, const std::u16string& text) { return MeantFile{number, text}; };
  EXPECT_THAT(NamesOf(known.Get()),
              ElementsAre(MeantName{u"F", place(2, u"F.vnx"), {}}, MeantName{u"K", place(1, u"@K/K.vnx"), {2}},
                          MeantName{u"f", place(2, u"f.vnx"), {3, 4}}, MeantName{u"p/g", place(1, u"+p/g.vnx"), {}}));
}

TEST(ShadowGraph, DrawsAnArcForEachPairAndTellsTheSameInATable) {
  const MemoryStorage storage =
      std::move(MemoryStorage().WithFiles({u"/a/f.vnx", u"/a/g.vnx", u"/b/f.vnx", u"/c/g.vnx", u"/d/other.vnx"}));
  const std::string html = ShadowsHtml(Known({u"/a", u"/b", u"/c", u"/d"}).GetShadows());

  EXPECT_THAT(html, HasSubstr("<title>folder 1 hides 1 name of folder 2</title>"));
  EXPECT_THAT(html, HasSubstr("<title>folder 1 hides 1 name of folder 3</title>"));
  EXPECT_THAT(html,
              HasSubstr("<summary>1 name</summary>\n<ul>\n<li><span class=\"grade identical\">identical</span> g"));
  EXPECT_THAT(html, Not(HasSubstr("memory:///d"))) << "it has no part in this";
}

TEST(ShadowGraph, DrawsAsManyArcsAsCanBeToldApartAndTellsAll) {
  MemoryStorage storage;
  std::vector<std::u16string> folders;
  for (std::size_t i = 0; i < kMostArcs + 6; ++i) {
    folders.push_back(u"/" + std::u16string(i + 1, u'x'));
    storage.WithFiles({folders.back() + u"/f.vnx"});
  }
  storage.WithFiles({u"/x/g.vnx", folders.back() + u"/g.vnx"});
  const std::string html = ShadowsHtml(Known(folders).GetShadows());

  const auto count = [&html](const std::string& part) {
    std::size_t times = 0;
    for (std::size_t at = html.find(part); at != std::string::npos; at = html.find(part, at + 1)) ++times;
    return times;
  };
  EXPECT_EQ(count("<g class=\"arc"), kMostArcs);
  EXPECT_EQ(count("<details>"), kMostArcs + 5);
  EXPECT_THAT(html, HasSubstr("Drawn are the 100 of 105 pairs that have most names."));
  EXPECT_THAT(html, HasSubstr("<title>folder 1 hides 2 names of folder 106</title>"));
}

/// Time that passes only while a folder is listed: as long as the folder is slow.
class SlowStorage : public ForwardingStorageProvider {
 public:
  using ForwardingStorageProvider::ForwardingStorageProvider;

  [[nodiscard]] FolderListing List(const AbsoluteIRI& folder) const override {
    const auto slow = slow_.find(folder);
    if (slow != slow_.end()) now_ += std::chrono::nanoseconds(slow->second).count();
    return ForwardingStorageProvider::List(folder);
  }
  void Slow(const std::u16string& folder, std::chrono::nanoseconds time) { slow_[InMemory(folder)] = time; }

  [[nodiscard]] SteadyClock Clock() const {
    return [this] { return std::chrono::steady_clock::time_point(std::chrono::nanoseconds(now_)); };
  }

 private:
  std::map<AbsoluteIRI, std::chrono::nanoseconds> slow_;
  mutable std::atomic<std::int64_t> now_ = 0;
};

class SlowestFolders : public testing::Test {
 protected:
  std::vector<FolderTime> Slowest(const std::vector<std::u16string>& folders,
                                  const std::vector<std::u16string>& masks = {}) const {
    const FolderEntryFactory reading(VornixStorageSystem::GetStorageSystemReference());
    const TimedEntryFactory entries(reading, slow_->Clock());
    const std::vector<AbsoluteIRI> locations = Locations(folders);
    const FolderList list("", [locations](std::string_view /*origin*/) { return locations; });
    return SlowestOf(LoadedPath(list, entries, Locations(masks)), entries);
  }

  MemoryStorage storage_ = std::move(MemoryStorage().WithFiles({u"/a/f.vnx", u"/b/+p/f.vnx", u"/c/f.vnx"}));
  std::shared_ptr<SlowStorage> slow_ = storage_.Through<SlowStorage>();
};

TEST_F(SlowestFolders, ComeFirst) {
  slow_->Slow(u"/a", microseconds(250));
  slow_->Slow(u"/c", milliseconds(12));

  EXPECT_THAT(Slowest({u"/a", u"/b", u"/c"}), ElementsAre(FolderTime{{InMemory(u"/c"), 3}, milliseconds(12)},
                                                          FolderTime{{InMemory(u"/a"), 1}, microseconds(250)},
                                                          FolderTime{{InMemory(u"/b"), 2}, microseconds(0)}));
}

TEST_F(SlowestFolders, TakeAsLongAsTheirSpecialFoldersToo) {
  slow_->Slow(u"/b", milliseconds(1));
  slow_->Slow(u"/b/+p", milliseconds(4));

  EXPECT_EQ(Slowest({u"/b"}).front().time, milliseconds(5));
}

TEST_F(SlowestFolders, AreNotAmongMaskedOnes) {
  slow_->Slow(u"/a", milliseconds(9));

  EXPECT_THAT(Slowest({u"/a", u"/b"}, {u"/a"}), ElementsAre(FolderTime{{InMemory(u"/b"), 2}, microseconds(0)}));
}

TEST_F(SlowestFolders, AreTenAtMostThoseOfEqualTimeInPathOrder) {
  std::vector<std::u16string> folders;
  for (char16_t name = u'a'; name <= u'l'; ++name) {
    folders.push_back(std::u16string(u"/").append(1, name));
    slow_->Slow(folders.back(), milliseconds(1));
  }
  slow_->Slow(u"/l", milliseconds(2));

  const std::vector<FolderTime> slowest = Slowest(folders);

  ASSERT_EQ(slowest.size(), kSlowestTold);
  EXPECT_EQ(slowest.front().folder.number, 12);
  for (std::size_t i = 1; i < slowest.size(); ++i) EXPECT_EQ(slowest[i].folder.number, i);
}

// So many folders are read by several threads; none is blamed for another.
TEST_F(SlowestFolders, HaveTheirOwnTimesOnALongPathToo) {
  std::vector<std::u16string> folders;
  for (int i = 0; i < 300; ++i) {
    folders.push_back(u"/folder" + std::u16string(static_cast<std::size_t>(i), u'x'));
    storage_.WithFolders({folders.back()});
    slow_->Slow(folders.back(), microseconds(i));
  }

  const std::vector<FolderTime> slowest = Slowest(folders);

  ASSERT_EQ(slowest.size(), kSlowestTold);
  for (int i = 0; i < 10; ++i) {
    EXPECT_EQ(slowest[static_cast<std::size_t>(i)],
              (FolderTime{{InMemory(folders[static_cast<std::size_t>(299 - i)]), static_cast<std::size_t>(300 - i)},
                          microseconds(299 - i)}));
  }
}

TEST(Milliseconds, HaveThreeDigitsBehindThePoint) {
  EXPECT_EQ(InMilliseconds(std::chrono::nanoseconds(999)), "0.000 ms");
  EXPECT_EQ(InMilliseconds(microseconds(7)), "0.007 ms");
  EXPECT_EQ(InMilliseconds(microseconds(12345)), "12.345 ms");
}

}  // namespace
}  // namespace vornixpath
