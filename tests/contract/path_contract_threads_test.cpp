// Many threads at once, from the first question on.

#include <mutex>
#include <support/run_together.hpp>

#include "path_contract.hpp"

namespace Quorvex::PathManagement::contract {
namespace {

/// An answer to each question that a path takes.
struct Answers {
  std::vector<EntryPtr> mainEntries;
  std::vector<EntryPtr> methodEntries;
  std::vector<EntryPtr> classFolders;
  std::vector<EntryPtr> partiallyMatching;
  std::vector<EntryPtr> visited;
  std::size_t visitedConcurrently = 0;
  std::vector<EntryPtr> at;
  std::vector<FoundItem> found;
  std::size_t pairsInOrder = 0;

  friend bool operator==(const Answers&, const Answers&) = default;
};

void AskAboutEntries(const IPath& path, Answers& answers) {
  for (const EntryPtr& first : answers.visited) {
    answers.at.push_back(path.GetMainEntryForEntry(*first));
    answers.at.push_back(path.GetParentEntryForEntry(*first));
    answers.at.push_back(path.GetPathEntryFromAbsoluteIRI(first->GetAbsoluteIRI(), kCaseInsensitive));
    for (const EntryPtr& second : answers.visited) {
      if (path.IsEntryOnPath(*second) && path.FirstEntryIsBeforeSecondOnPath(*first, *second)) ++answers.pairsInOrder;
    }
  }
}

Answers Ask(const IPath& path) {
  Answers answers;
  answers.mainEntries = *path.GetMainEntries();
  answers.methodEntries = path.GetMethodEntries();
  answers.classFolders = path.GetMethodEntriesByName(VisibleScope, u"cls", kCaseInsensitive);
  answers.partiallyMatching = path.GetPartiallyMatchingEntries(kEveryKind, u"private", kNative);
  path.ForEachEntry(kEveryKind, [&](const EntryPtr& entry) {
    answers.visited.push_back(entry);
    return false;
  });
  std::mutex mutex;
  path.ConcurrentForEachEntry(kEveryKind, [&](const EntryPtr&) {
    const std::scoped_lock lock(mutex);
    ++answers.visitedConcurrently;
    return false;
  });
  for (const FilenameMatchingPolicy policy : kEachPolicy) {
    for (const FoundItem& found : path.FindAllInScope(VisibleScope, Wanted{u"foo"}.Target(), policy)) {
      answers.found.push_back(found);
    }
    if (const auto first = path.FindFirstInScope(kEveryKind, Wanted{u"deep"}.Target(), policy)) {
      answers.found.push_back(*first);
    }
  }
  AskAboutEntries(path, answers);
  return answers;
}

TEST_P(PathContract, GivesEveryThreadTheSameAnswersFromTheFirstQuestionOn) {
  const PathPtr path = Make(SampleContent());
  std::vector<Answers> answers(4);

  support::RunTogether(answers.size(), [&](std::size_t index) { answers[index] = Ask(*path); });

  const Answers alone = Ask(*path);
  EXPECT_EQ(alone.visited.size(), alone.visitedConcurrently);
  for (const Answers& ofThread : answers) EXPECT_TRUE(ofThread == alone);
}

}  // namespace
}  // namespace Quorvex::PathManagement::contract
