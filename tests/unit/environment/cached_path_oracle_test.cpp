// Whatever happened to the folders since, and whatever happened to the file, a path with the help of a cache answers as
// one without.

#include <gmock/gmock.h>

#include <iostream>
#include <search_path_environment/whole_file.hpp>
#include <search_path_utilities/lookup.hpp>

#include "cached_tree.hpp"

namespace Quorvex::PathEnvironment {
namespace {

NameComparison AnyComparison(RandomSource& random) {
  return random.OneIn(4) ? NameComparison::IgnoreCase : NameComparison::Exact;
}

TEST(PathsWithACache, AnswerAsPathsWithoutOneWhateverHappenedOnDisk) {
  RandomSource random = RandomSource::OfThisRun(7'001);
  SCOPED_TRACE(random.Describe());
  std::size_t quick = 0;
  for (int round = 0; round < RandomSource::Rounds(400) && !testing::Test::HasFailure(); ++round) {
    SCOPED_TRACE("round " + std::to_string(round));
    CachedTree tree(random, AnyComparison(random));
    tree.WriteCache();
    for (std::size_t changes = random.Below(4); changes > 0; --changes) tree.ChangeSomething();

    const auto cache = ToolboxCache::Open(SessionStorage(), CachedTree::CacheLocation(), CacheTrust::Proven);
    const auto path = tree.WithHelpOf(cache);
    if (const auto cached = std::dynamic_pointer_cast<const CachedPath>(path)) {
      ++quick;
      EXPECT_EQ(AllShown(cached->GetProblems()), AllShown(tree.Fresh()->GetProblems()));
    }
    ExpectSameAnswers(tree, *path, *tree.Fresh(), random);
  }
  EXPECT_GT(quick, static_cast<std::size_t>(RandomSource::Rounds(100)));
}

TEST(PathsWithACache, TrustedBlindlyAnswerAsWhenItWasWritten) {
  RandomSource random = RandomSource::OfThisRun(7'002);
  SCOPED_TRACE(random.Describe());
  for (int round = 0; round < RandomSource::Rounds(100) && !testing::Test::HasFailure(); ++round) {
    CachedTree tree(random, AnyComparison(random));
    tree.WriteCache();
    const auto before = tree.Fresh();
    for (int i = 0; i < 5; ++i) tree.ChangeSomething();

    const auto path = tree.Cached(ToolboxCache::Open(SessionStorage(), CachedTree::CacheLocation(), CacheTrust::Blind));
    ExpectSameAnswers(tree, *path, *before, random);
    EXPECT_EQ(AllShown(path->GetWhole()->GetProblems()), AllShown(before->GetProblems()));
    EXPECT_EQ(path->GetWhole()->GetPositions(), before->GetPositions());
  }
}

// The folders up to the one that decides, and what happened in them since, are enough for whatever is found in them.
TEST(PathsWithACache, FindInTheFoldersThatDecideWhatAllOfThemTogetherMean) {
  RandomSource random = RandomSource::OfThisRun(7'004);
  SCOPED_TRACE(random.Describe());
  std::size_t early = 0;
  for (int round = 0; round < RandomSource::Rounds(300) && !testing::Test::HasFailure(); ++round) {
    SCOPED_TRACE("round " + std::to_string(round));
    CachedTree tree(random, AnyComparison(random));
    tree.WriteCache();
    for (std::size_t changes = random.Below(4); changes > 0; --changes) tree.ChangeSomething();

    const auto fresh = tree.Fresh();
    const auto cache = ToolboxCache::Open(SessionStorage(), CachedTree::CacheLocation(), CacheTrust::Proven);
    for (int i = 0; i < 8; ++i) {
      const Wanted wanted{tree.RandomName(), random.ListOf(3, [&] { return tree.RandomExtension(); })};
      const auto path = tree.Cached(cache, CachedPath::CountDeciding(cache, wanted.Target()));
      if (!path || path->IsWhole()) continue;
      const auto found = FindFirstFileVisibleOnPath(*path, wanted.Target(), kNative);
      if (!found) continue;  // what the cache knew is gone, and all must be asked
      ++early;
      EXPECT_EQ(Shown(found), Shown(FindFirstFileVisibleOnPath(*fresh, wanted.Target(), kNative)));
    }
  }
  EXPECT_GT(early, static_cast<std::size_t>(RandomSource::Rounds(50)));
}

// Rarely in the header's page, most of which is empty.
std::size_t AnyPlace(const std::string& bytes, RandomSource& random) {
  constexpr std::size_t header = 264;
  constexpr std::size_t page = 4096;
  return random.OneIn(8) ? random.Below(header) : page + random.Below(bytes.size() - page);
}

std::string Mutated(std::string bytes, const std::string& other, RandomSource& random) {
  switch (random.Below(4)) {
    case 0:  // a bit flips
      bytes[AnyPlace(bytes, random)] ^= static_cast<char>(1U << random.Below(8));
      return bytes;
    case 1:  // the end is cut off
      return bytes.substr(0, random.Below(bytes.size() + 1));
    case 2: {  // a piece of another cache stands in it
      const std::size_t begin = AnyPlace(bytes.size() < other.size() ? bytes : other, random);
      const std::size_t length = random.Below(std::min(bytes.size(), other.size()) - begin);
      return bytes.replace(begin, length, other, begin, length);
    }
    default: {  // pieces of it change places
      const std::size_t begin = AnyPlace(bytes, random);
      const std::size_t length = random.Below(bytes.size() - begin);
      return bytes.replace(random.Below(bytes.size() - length), length, bytes.substr(begin, length));
    }
  }
}

TEST(PathsWithACache, AnswerRightWhateverTheBytesOfTheFile) {
  RandomSource random = RandomSource::OfThisRun(7'003);
  SCOPED_TRACE(random.Describe());
  int refused = 0;
  const int rounds = RandomSource::Rounds(4'000);
  for (int round = 0; round < rounds && !testing::Test::HasFailure();) {
    CachedTree other(random, NameComparison::Exact);
    other.WriteCache();
    const std::string otherBytes = *ReadWholeFile(other.GetMemory().GetProvider(), CachedTree::CacheLocation());
    CachedTree tree(random, AnyComparison(random));
    tree.WriteCache();
    const std::string bytes = *ReadWholeFile(tree.GetMemory().GetProvider(), CachedTree::CacheLocation());
    if (random.OneIn(3)) tree.ChangeSomething();
    const auto fresh = tree.Fresh();

    for (int i = 0; i < 100; ++i, ++round) {
      const std::string mutated = Mutated(bytes, otherBytes, random);
      tree.GetMemory().GetProvider().AddFile(u"/cache/toolbox", mutated);
      try {
        const auto cache = ToolboxCache::Open(SessionStorage(), CachedTree::CacheLocation(), CacheTrust::Proven);
        ExpectSameAnswers(tree, *tree.WithHelpOf(cache), *fresh, random);
      } catch (const ToolboxCacheError& error) {
        EXPECT_NE(std::string(error.what()), "");
        ++refused;
      }
    }
  }
  std::cout << rounds << " mutated caches: " << refused << " refused, " << rounds - refused << " answered right\n";
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
