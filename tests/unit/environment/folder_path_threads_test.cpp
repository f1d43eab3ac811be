#include <gmock/gmock.h>

#include <string>
#include <support/run_together.hpp>
#include <vector>

#include "memory_storage.hpp"
#include "shown.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using PathManagement::support::RunTogether;

constexpr std::size_t kThreads = 8;

// Everything that one reader asks of a path, in an order of its own.
class Reader {
 public:
  Reader(const FolderPath& path, std::size_t first) : path_(path), first_(first) {}

  Texts AnswersInOrder() {
    Texts answers(6);
    for (std::size_t step = 0; step < answers.size(); ++step) {
      const std::size_t question = (first_ + step) % answers.size();
      answers[question] = Answer(question);
    }
    return answers;
  }

 private:
  [[nodiscard]] std::string Answer(std::size_t question) const {
    switch (question) {
      case 0:
        return Shown(path_.FindFirstInScope(kEveryKind, Wanted{u"FILE", {u".x"}}.Target(), kCaseInsensitive));
      case 1:
        return testing::PrintToString(
            AllShown(path_.FindAllInScope(kEveryKind, Wanted{u"file", {u".X", u".x"}}.Target(), kCaseInsensitive)));
      case 2:
        return Shown(path_.GetPathEntryFromAbsoluteIRI(InMemory(u"/A/@CLASS"), kCaseInsensitive));
      case 3:
        return testing::PrintToString(AllShown(path_.GetMethodEntriesByName(kEveryKind, u"CLASS", kCaseInsensitive)));
      case 4:
        return ItemsOfAll();
      default:
        return testing::PrintToString(Walk(path_));
    }
  }

  [[nodiscard]] std::string ItemsOfAll() const {
    std::string text;
    path_.ForEachEntry(kEveryKind, [&text](const EntryPtr& entry) {
      text += testing::PrintToString(AllShown(*entry->GetItems()));
      return false;
    });
    return text;
  }

  const FolderPath& path_;
  std::size_t first_;
};

TEST(FolderPathThreads, GiveEveryReaderTheSameAnswersFromTheFirstQuestionOn) {
  MemoryStorage storage;
  storage.WithFiles({u"/a/File.x", u"/a/@class/file.X", u"/a/private/other", u"/b/+p/@Class/FILE.x", u"/b/g"});

  for (int round = 0; round < 20; ++round) {
    const auto path = storage.Path({u"/a", u"/b"});
    std::vector<Texts> answers(kThreads);

    RunTogether(kThreads, [&](std::size_t reader) { answers[reader] = Reader(*path, reader).AnswersInOrder(); });

    EXPECT_EQ(answers[0][0], "/a: File.x");
    for (const auto& each : answers) ASSERT_EQ(each, answers[0]);
  }
}

TEST(FolderPathThreads, ShareTheItemsOfAnEntryThatSomebodyHolds) {
  MemoryStorage storage;
  for (char16_t letter = u'a'; letter <= u'z'; ++letter) storage.WithFiles({u"/m/" + std::u16string(1, letter)});
  const auto entry = storage.Entry(u"/m");
  const auto held = entry->GetItems();
  std::vector<std::shared_ptr<const FolderEntry::Items>> seen(kThreads);

  RunTogether(kThreads, [&](std::size_t reader) { seen[reader] = entry->GetItems(); });

  for (const auto& items : seen) EXPECT_EQ(items, held);
}

TEST(FolderPathThreads, MakeAndDropTheItemsOfAnEntryAtOnce) {
  MemoryStorage storage;
  storage.WithFiles({u"/m/a", u"/m/b", u"/m/c"});
  const auto entry = storage.Entry(u"/m");
  std::vector<Texts> seen(kThreads);

  RunTogether(kThreads, [&](std::size_t reader) {
    for (int turn = 0; turn < 200; ++turn) seen[reader] = AllShown(*entry->GetItems());
  });

  for (const auto& names : seen) EXPECT_THAT(names, testing::ElementsAre("a", "b", "c"));
}

TEST(FolderPathThreads, MayLoadPathsAtOnce) {
  MemoryStorage storage;
  storage.WithFiles({u"/a/@c/f", u"/b/+p/g"});
  std::vector<Texts> walks(kThreads);

  RunTogether(kThreads, [&](std::size_t reader) { walks[reader] = Walk(*storage.Path({u"/a", u"/b"})); });

  for (const auto& walk : walks) EXPECT_THAT(walk, testing::ElementsAre("/a", "/a/@c", "/b", "/b/+p"));
}

TEST(FolderPathThreads, MayReleaseAPathWhileAnotherStillReadsItsEntries) {
  MemoryStorage storage;
  storage.WithFiles({u"/a/@c/f", u"/a/g"});
  auto path = storage.Path({u"/a"});
  std::vector<EntryPtr> entries = path->GetMethodEntries();
  std::vector<Texts> seen(kThreads);

  RunTogether(kThreads, [&](std::size_t reader) {
    if (reader == 0) path.reset();
    seen[reader] = AllShown(*entries[0]->GetItems());
  });

  for (const auto& names : seen) EXPECT_THAT(names, testing::ElementsAre("f"));
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
