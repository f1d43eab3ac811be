#include "shadow_baseline.hpp"

#include <gmock/gmock.h>

#include <fakes/failing_storage_provider.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <search_path_environment/whole_file.hpp>
#include <support/random_source.hpp>
#include <unit/environment/memory_storage.hpp>

#include "shadow_baseline_file.hpp"
#include "shadow_pairs.hpp"

namespace vornixpath {
namespace {

using foundation::storage::fakes::FailingStorageProvider;
using foundation::storage::vfs::AbsoluteIRI;
using Quorvex::PathEnvironment::InMemory;
using Quorvex::PathEnvironment::MemoryStorage;
using testing::HasSubstr;

const AbsoluteIRI kFolder(u"file:///project");
const std::string kBeginning =
    "# shadowed names, version 1\n"
    "# Grade, folder that hides, hidden one, name, what is hidden there: separated by tabs, sorted.\n";

AcceptedShadow Accepted(const std::u16string& hiding, const std::u16string& hidden, const std::u16string& name,
                        ShadowGrade grade = ShadowGrade::Different) {
  return {AbsoluteIRI(hiding), AbsoluteIRI(hidden), name, name + u".vnx", grade};
}

std::string ReasonToRefuse(const std::string& text) {
  try {
    static_cast<void>(ParseBaseline(text, kFolder));
  } catch (const std::runtime_error& reason) {
    return reason.what();
  }
  return "none";
}

TEST(ShadowBaseline, TellsFoldersBelowItsOwnFromThereOn) {
  EXPECT_EQ(BaselineText({Accepted(u"file:///project", u"file:///project/x/y", u"greet"),
                          Accepted(u"file:///projects", u"file:///", u"f", ShadowGrade::Kind)},
                         kFolder),
            kBeginning + "different\t.\t./x/y\tgreet\tgreet.vnx\nkind\tfile:///projects\tfile:///\tf\tf.vnx\n");
}

TEST(ShadowBaseline, IsTheSameForATreeAtAnotherPlace) {
  const auto textAt = [](const std::u16string& root) {
    return BaselineText({Accepted(root + u"/a", root + u"/b", u"f"), Accepted(u"file:///m", root + u"/b", u"g")},
                        AbsoluteIRI(root));
  };

  EXPECT_EQ(textAt(u"file:///aaa"), textAt(u"file:///zzz"));
}

TEST(ShadowBaseline, IsSortedByFoldersThenByName) {
  EXPECT_EQ(BaselineText({Accepted(u"file:///project/b", u"file:///project/a", u"f"),
                          Accepted(u"file:///project/a", u"file:///project/b", u"g"),
                          Accepted(u"file:///project/a", u"file:///project/b", u"f", ShadowGrade::Kind),
                          Accepted(u"file:///project/a", u"file:///project/b", u"f", ShadowGrade::Identical)},
                         kFolder),
            kBeginning +
                "identical\t./a\t./b\tf\tf.vnx\n"
                "kind\t./a\t./b\tf\tf.vnx\n"
                "different\t./a\t./b\tg\tg.vnx\n"
                "different\t./b\t./a\tf\tf.vnx\n");
}

TEST(ShadowBaseline, KeepsNamesAndFoldersThatWouldDisturbIt) {
  const std::vector<std::string> names = {"a b",
                                          "tab\there",
                                          "line\nend",
                                          "100%",
                                          "%41",
                                          "\xFF\xFE",
                                          "\x1B[31m",
                                          "\\",
                                          "#",
                                          "ende\r",
                                          "\xE2\x80\xAE"
                                          "abc",
                                          "\xC3\xA4"};
  AcceptedShadows shadows;
  for (const std::string& bytes : names) {
    const std::u16string name = fl::filesystem::from_bytes(bytes);
    shadows.insert({kFolder.getChild(name), AbsoluteIRI(u"file:///elsewhere").getChild(name), name, u"+p/" + name,
                    ShadowGrade::Kind});
  }

  const std::string text = BaselineText(shadows, kFolder);
  EXPECT_EQ(ParseBaseline(text, kFolder), shadows);
  EXPECT_EQ(text.find_first_of("\x1B\r\xFF"), std::string::npos);
}

TEST(ShadowBaseline, ComesBackWhateverItHolds) {
  using Quorvex::PathManagement::support::RandomSource;
  RandomSource random = RandomSource::OfThisRun(20'264);
  SCOPED_TRACE(random.Describe());
  const auto randomName = [&random] {
    std::string bytes(random.Below(6) + 1, 'x');
    for (char& byte : bytes) {
      do byte = static_cast<char>(random.Below(255) + 1);
      while (byte == '/' || byte == '.');
    }
    return fl::filesystem::from_bytes(bytes);
  };
  for (int round = 0; round < 200 && !testing::Test::HasFailure(); ++round) {
    AcceptedShadows shadows;
    for (std::size_t count = random.Below(5); count > 0; --count) {
      const AbsoluteIRI root = random.OneIn(2) ? kFolder : AbsoluteIRI(u"memory://host/x");
      shadows.insert(
          {root.getChild(randomName()), root, randomName(), randomName(), static_cast<ShadowGrade>(random.Below(5))});
    }
    EXPECT_EQ(ParseBaseline(BaselineText(shadows, kFolder), kFolder), shadows);
  }
}

TEST(ShadowBaseline, MayHoldCommentsBlankLinesAndForeignLineEnds) {
  EXPECT_EQ(ParseBaseline("# shadowed names, version 1\r\n\r\n# why\r\nkind\t./a\t./b\tf\tf.vnx\r\n", kFolder),
            AcceptedShadows({Accepted(u"file:///project/a", u"file:///project/b", u"f", ShadowGrade::Kind)}));
}

TEST(ShadowBaseline, IsRefusedWithTheLineAndTheReason) {
  EXPECT_EQ(ReasonToRefuse(""), "it is empty");
  EXPECT_EQ(ReasonToRefuse("# shadowed names, version 1"),
            "line 1: it does not end with a newline, so it may be cut off");
  EXPECT_EQ(ReasonToRefuse("something\n"), "line 1: it should be \"# shadowed names, version 1\"");
  EXPECT_EQ(ReasonToRefuse(kBeginning + "kind\t./a\t./b\tf\tf.vnx"),
            "line 3: it does not end with a newline, so it may be cut off");
  EXPECT_EQ(ReasonToRefuse(kBeginning + "kind\t./a\t./b\tf\n"),
            "line 3: it should hold a grade, two folders, a name and a place, separated by tabs");
  EXPECT_EQ(ReasonToRefuse(kBeginning + "kind\t./a\t./b\tf\tf.vnx\t\n"),
            "line 3: it should hold a grade, two folders, a name and a place, separated by tabs");
  EXPECT_EQ(ReasonToRefuse(kBeginning + "\ngrave\t./a\t./b\tf\tf.vnx\n"), "line 4: there is no grade \"grave\"");
  EXPECT_THAT(ReasonToRefuse(kBeginning + "kind\ta\t./b\tf\tf.vnx\n"), HasSubstr("line 3: malformed identifier \"a\""));
  EXPECT_EQ(ReasonToRefuse(kBeginning + "kind\t./a\t./b\t%4\tf.vnx\n"), "line 3: \"%4\" is no name");
  EXPECT_EQ(ReasonToRefuse(kBeginning + "kind\t./a\t./b\t%4G\tf.vnx\n"), "line 3: \"%4G\" is no name");
  EXPECT_EQ(ReasonToRefuse(kBeginning + "kind\t./a\t./b\t\tf.vnx\n"), "line 3: \"\" is no name");
  EXPECT_EQ(ReasonToRefuse(kBeginning + "kind\t./a\t./b\tf\t\n"), "line 3: \"\" is no place");
}

TEST(ShadowBaseline, HoldsNoControlCharacters) {
  using namespace std::string_literals;
  for (const std::string& byte : {"\0"s, "\1"s, "\r"s, "\x1B"s, "\x7F"s}) {
    const std::string reason = "line 3: it holds a control character other than a tab";
    EXPECT_EQ(ReasonToRefuse(kBeginning + "# " + byte + ".\n"), reason);
    EXPECT_EQ(ReasonToRefuse(kBeginning + "kind\t./a\t./b\tf" + byte + "\tf.vnx\n"), reason);
    EXPECT_EQ(ReasonToRefuse(kBeginning + "kind\t./a" + byte + "\t./b\tf\tf.vnx\n"), reason);
  }
}

TEST(ShadowBaseline, TellsNoFolderBelowItsOwnInARoundaboutWay) {
  for (const std::string folder : {"./", "./..", "./a/../b", "./a/./b", "./a//b", "./a/", "./%2E%2e", "./%2e/a"}) {
    EXPECT_EQ(ReasonToRefuse(kBeginning + "kind\t" + folder + "\t./b\tf\tf.vnx\n"),
              "line 3: \"" + folder + "\" is no folder below");
  }
}

TEST(ShadowBaseline, MayHoldAnEntryTwice) {
  const std::string line = "kind\t./a\t./b\tf\tf.vnx\n";
  EXPECT_EQ(ParseBaseline(kBeginning + line + line, kFolder).size(), 1U);
}

TEST(ShadowBaseline, ThatIsMissingOrDamagedIsNamed) {
  MemoryStorage storage = std::move(MemoryStorage().WithFolders({u"/p"}));
  const auto reason = [] {
    try {
      static_cast<void>(ReadBaseline(InMemory(u"/p/base")));
    } catch (const std::runtime_error& error) {
      return std::string(error.what());
    }
    return std::string();
  };

  EXPECT_EQ(reason(), "cannot use the baseline \"memory:///p/base\": there is no such file");
  storage.GetProvider().AddFile(u"/p/base", "x\n");
  EXPECT_EQ(reason(),
            "cannot use the baseline \"memory:///p/base\": line 1: it should be \"# shadowed names, version 1\"");
}

std::optional<std::string> Content(const MemoryStorage& storage, std::u16string_view file) {
  return Quorvex::PathEnvironment::ReadWholeFile(storage.GetProvider(), InMemory(file));
}

TEST(ShadowBaseline, IsWhatWasWritten) {
  const MemoryStorage storage = std::move(MemoryStorage().WithFolders({u"/p"}));
  const AcceptedShadows shadows = {Accepted(u"memory:///p/a", u"memory:///q", u"f")};

  WriteBaseline(shadows, InMemory(u"/p/base"));
  EXPECT_EQ(ReadBaseline(InMemory(u"/p/base")), shadows);
  EXPECT_EQ(Content(storage, u"/p/base"), kBeginning + "different\t./a\tmemory:///q\tf\tf.vnx\n");
}

TEST(ShadowBaseline, BehindALinkIsReplacedThere) {
  const MemoryStorage storage =
      std::move(MemoryStorage().WithFiles({u"/q/real"}).WithFolders({u"/p"}).WithLink(u"/p/base", u"../q/real"));

  WriteBaseline({}, InMemory(u"/p/base"));
  EXPECT_EQ(Content(storage, u"/q/real"), kBeginning);
}

std::string ReasonNotToWrite(std::u16string_view file) {
  try {
    WriteBaseline({}, InMemory(file));
  } catch (const std::runtime_error& reason) {
    return reason.what();
  }
  return "none";
}

TEST(ShadowBaseline, TellsFoldersFromWhereItReallyStandsThroughWhateverLinks) {
  const MemoryStorage storage = std::move(MemoryStorage()
                                              .WithFolders({u"/real/p/a", u"/opt/ext", u"/keep"})
                                              .WithFiles({u"/real/p/base"})
                                              .WithLink(u"/link", u"real")
                                              .WithLink(u"/real/p/ext", u"/opt/ext")
                                              .WithLink(u"/other", u"real/p/a")
                                              .WithLink(u"/keep/base", u"../link/p/base"));
  const AcceptedShadows shadows = {Accepted(u"memory:///link/p/a", u"memory:///link/p/ext", u"f"),
                                   Accepted(u"memory:///other", u"memory:///real/p/ext", u"g"),
                                   Accepted(u"memory:///opt/ext", u"memory:///link/p", u"h")};

  for (const auto* const base : {u"/real/p/base", u"/link/p/base", u"/keep/base"}) {
    WriteBaseline(shadows, InMemory(base));
    EXPECT_EQ(Content(storage, u"/real/p/base"), kBeginning +
                                                     "different\t./a\t./ext\tf\tf.vnx\n"
                                                     "different\t./a\t./ext\tg\tg.vnx\n"
                                                     "different\tmemory:///opt/ext\t.\th\th.vnx\n");
    EXPECT_EQ(ReadBaseline(InMemory(base)),
              AcceptedShadows({Accepted(u"memory:///real/p/a", u"memory:///real/p/ext", u"f"),
                               Accepted(u"memory:///real/p/a", u"memory:///real/p/ext", u"g"),
                               Accepted(u"memory:///opt/ext", u"memory:///real/p", u"h")}));
  }
}

TEST(ShadowBaseline, AtTheRootTellsEveryFolderFromThereOn) {
  const MemoryStorage storage = std::move(MemoryStorage().WithFolders({u"/a"}).WithLink(u"/b", u"a"));

  WriteBaseline({Accepted(u"memory:///a", u"memory:///b", u"f")}, InMemory(u"/base"));
  EXPECT_EQ(Content(storage, u"/base"), kBeginning + "different\t./a\t./b\tf\tf.vnx\n");
}

TEST(ShadowBaseline, IsNotWrittenWhereALinkLeadsNowhere) {
  const MemoryStorage storage = std::move(MemoryStorage().WithFolders({u"/p"}).WithLink(u"/p/base", u"gone"));

  EXPECT_EQ(ReasonNotToWrite(u"/p/base"),
            "cannot write the baseline \"memory:///p/base\": it is a link that leads nowhere");
  EXPECT_EQ(Content(storage, u"/p/gone"), std::nullopt);
}

TEST(ShadowBaseline, DoesNotTakeThePlaceOfAFolder) {
  const MemoryStorage storage = std::move(MemoryStorage().WithFolders({u"/p/empty"}).WithLink(u"/p/base", u"empty"));

  EXPECT_EQ(ReasonNotToWrite(u"/p/empty"), "cannot write the baseline \"memory:///p/empty\": it is no regular file");
  EXPECT_EQ(ReasonNotToWrite(u"/p/base"), "cannot write the baseline \"memory:///p/base\": it is no regular file");
  EXPECT_TRUE(storage.GetProvider().List(InMemory(u"/p/empty")).entries.empty());
}

TEST(ShadowBaseline, TakesThePlaceOfNothingButABaselineOrAnEmptyFile) {
  MemoryStorage storage;
  for (const std::string old : {"x", "\n", "# shadowed names, version 2\n", "# shadowed names, version 1 or so\n"}) {
    storage.GetProvider().AddFile(u"/p/base", old);
    EXPECT_EQ(ReasonNotToWrite(u"/p/base"),
              "cannot write the baseline \"memory:///p/base\": something that is no baseline stands there");
    EXPECT_EQ(Content(storage, u"/p/base"), old);
  }
  for (const std::string old : {"", "# shadowed names, version 1\r\n", "# shadowed names, version 1\ndamaged"}) {
    storage.GetProvider().AddFile(u"/p/base", old);
    EXPECT_EQ(ReasonNotToWrite(u"/p/base"), "none");
    EXPECT_EQ(Content(storage, u"/p/base"), kBeginning);
  }
}

TEST(ShadowBaseline, IsStillWholeWhateverFailsWhileItIsWritten) {
  const std::string old = kBeginning + "kind\t./a\t./b\tf\tf.vnx\n";
  for (std::size_t call = 1;; ++call) {
    MemoryStorage storage;
    storage.GetProvider().AddFile(u"/p/base", old);
    const auto failing = storage.Through<FailingStorageProvider>();
    failing->Plan({.call = call});
    try {
      WriteBaseline({Accepted(u"memory:///p/a", u"memory:///q", u"f")}, InMemory(u"/p/base"));
      EXPECT_EQ(failing->GetFailureCount(), 0U) << "a failure was not told";
      EXPECT_GT(call, 5U);
      break;
    } catch (const std::runtime_error& failure) {
      EXPECT_THAT(failure.what(), testing::StartsWith("cannot write the baseline \"memory:///p/base\": "));
      EXPECT_EQ(Content(storage, u"/p/base"), old) << call;
      EXPECT_EQ(storage.GetProvider().List(InMemory(u"/p")).entries.size(), 1U) << "a draft is left, " << call;
    }
  }
}

// Two folders that share the names f and g, graded so.
std::vector<ShadowPair> PairWith(ShadowGrade gradeOfF, ShadowGrade gradeOfG) {
  const MemoryStorage storage =
      std::move(MemoryStorage().WithFiles({u"/a/f.vnx", u"/b/f.vnx", u"/a/g.vnx", u"/b/g.vnx"}));
  const auto path = storage.Path({u"/a", u"/b"});
  std::vector<GradedShadow> graded;
  for (Shadow& shadow : FindShadows(*path, {u".vnx"})) {
    const ShadowGrade grade = shadow.name == u"f" ? gradeOfF : gradeOfG;
    graded.push_back({std::move(shadow), grade, {}});
  }
  return PairsOf(std::move(graded), *path, FolderNumbers(*path));
}

TEST(ShadowBaseline, LeavesOutWhatItHoldsAndTellsWhatIsGone) {
  std::vector<ShadowPair> pairs = PairWith(ShadowGrade::Different, ShadowGrade::Different);
  const AcceptedShadow gone = Accepted(u"memory:///a", u"memory:///b", u"h");

  const BaselineEffect effect = LeaveOut({Accepted(u"memory:///a", u"memory:///b", u"f"), gone}, pairs);
  EXPECT_EQ(effect.leftOut, 1U);
  EXPECT_EQ(effect.gone, AcceptedShadows({gone}));
  ASSERT_EQ(pairs.size(), 1U);
  ASSERT_EQ(pairs[0].shadows.size(), 1U);
  EXPECT_EQ(pairs[0].shadows[0].shadow.name, u"g");
}

TEST(ShadowBaseline, DoesNotLeaveOutWhatHasBecomeGraver) {
  std::vector<ShadowPair> pairs = PairWith(ShadowGrade::Identical, ShadowGrade::Different);
  const AcceptedShadows accepted = AcceptedFor(PairWith(ShadowGrade::Identical, ShadowGrade::Identical));

  EXPECT_EQ(LeaveOut(accepted, pairs).leftOut, 1U);
  ASSERT_EQ(pairs.size(), 1U);
  EXPECT_EQ(pairs[0].shadows[0].shadow.name, u"g");
}

TEST(ShadowBaseline, KnowsFoldersOfThePathUnderEverySpelling) {
  const MemoryStorage storage =
      std::move(MemoryStorage().WithFolders({u"/real/a", u"/b", u"/c"}).WithLink(u"/link", u"real"));
  const LoadedPath path({InMemory(u"/link/a"), InMemory(u"/b")});

  EXPECT_EQ(SpelledAsOn(path, {Accepted(u"memory:///real/a", u"memory:///b", u"f"),
                               Accepted(u"memory:///link/a", u"memory:///b", u"f"),
                               Accepted(u"memory:///c", u"memory:///real/a", u"g")}),
            AcceptedShadows({Accepted(u"memory:///link/a", u"memory:///b", u"f"),
                             Accepted(u"memory:///c", u"memory:///link/a", u"g")}));
}

TEST(ShadowBaseline, DoesNotLeaveOutWhatIsHiddenAtAnotherPlace) {
  const MemoryStorage storage =
      std::move(MemoryStorage().WithFiles({u"/a/f.vnx", u"/b/f.vnx", u"/b/f.x", u"/a/+p/@K/m.vnx", u"/b/+p/@K/m.vnx"}));
  const auto path = storage.Path({u"/a", u"/b"});
  std::vector<GradedShadow> graded;
  for (Shadow& shadow : FindShadows(*path, {u".vnx", u".x"})) {
    graded.push_back({std::move(shadow), ShadowGrade::Different, {}});
  }
  std::vector<ShadowPair> pairs = PairsOf(std::move(graded), *path, FolderNumbers(*path));
  AcceptedShadow method = Accepted(u"memory:///a", u"memory:///b", u"p/K/m");
  method.place = u"+p/@K/m.vnx";

  EXPECT_EQ(LeaveOut({Accepted(u"memory:///a", u"memory:///b", u"f"), method}, pairs).leftOut, 2U);
  ASSERT_EQ(pairs.size(), 1U);
  ASSERT_EQ(pairs[0].shadows.size(), 1U);
  EXPECT_EQ(pairs[0].shadows[0].shadow.hidden, InMemory(u"/b/f.x"));
}

TEST(ShadowBaseline, LeavesNoPairWithoutNames) {
  std::vector<ShadowPair> pairs = PairWith(ShadowGrade::Kind, ShadowGrade::Kind);

  EXPECT_EQ(LeaveOut(AcceptedFor(pairs), pairs).leftOut, 2U);
  EXPECT_TRUE(pairs.empty());
}

}  // namespace
}  // namespace vornixpath
