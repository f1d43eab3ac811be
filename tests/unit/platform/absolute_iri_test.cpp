#include <gmock/gmock.h>

#include <boost/container_hash/hash.hpp>
#include <boost/url/parse.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <optional>
#include <set>
#include <support/random_text.hpp>
#include <support/run_together.hpp>
#include <support/storage_matchers.hpp>
#include <type_traits>
#include <unordered_set>

namespace foundation::storage::vfs {
namespace {

using support::RandomIdentifierText;
using support::RandomNameBytes;
using support::RandomSource;
using testing::ElementsAre;
using testing::IsEmpty;

std::u16string NormalFormOf(const std::u16string& text) { return AbsoluteIRI(text).toString(); }

std::string ReasonAgainst(const std::u16string& text) {
  try {
    return "accepted as " + fl::filesystem::to_bytes(NormalFormOf(text));
  } catch (const Exception& problem) {
    EXPECT_EQ(problem.GetOffendingText(), text);
    return problem.what();
  }
}

TEST(AbsoluteIRI, PrintsSchemeHostAndPath) {
  EXPECT_EQ(NormalFormOf(u"file:///a/b"), u"file:///a/b");
  EXPECT_EQ(NormalFormOf(u"file:/a/b"), u"file:///a/b");
  EXPECT_EQ(NormalFormOf(u"http://host/a"), u"http://host/a");
}

TEST(AbsoluteIRI, LowersSchemeAndHostButNothingElse) {
  EXPECT_EQ(NormalFormOf(u"FILE://Server/Share"), u"file://server/Share");
  EXPECT_EQ(NormalFormOf(u"http://Me@Host:80/A"), u"http://Me@host:80/A");
}

TEST(AbsoluteIRI, LeavesLocalhostOutForFilesOnly) {
  EXPECT_EQ(NormalFormOf(u"file://LocalHost/a"), u"file:///a");
  EXPECT_EQ(NormalFormOf(u"file://%6cocalhost/a"), u"file:///a");
  EXPECT_EQ(NormalFormOf(u"memory://localhost/a"), u"memory://localhost/a");
}

TEST(AbsoluteIRI, DropsTrailingSeparatorsButTheRoots) {
  EXPECT_EQ(NormalFormOf(u"file:///a/"), u"file:///a");
  EXPECT_EQ(NormalFormOf(u"file:///"), u"file:///");
  EXPECT_EQ(NormalFormOf(u"file://"), u"file:///");
  EXPECT_EQ(NormalFormOf(u"http://host"), u"http://host/");
  EXPECT_EQ(NormalFormOf(u"http://host/a//"), u"http://host/a");
}

TEST(AbsoluteIRI, CollapsesEmptySegmentsForFilesAndRootlessIdentifiers) {
  EXPECT_EQ(NormalFormOf(u"file:///a//b"), u"file:///a/b");
  EXPECT_EQ(NormalFormOf(u"memory:a//b"), u"memory:a/b");
  EXPECT_EQ(NormalFormOf(u"memory:///a//b"), u"memory:///a//b");
}

TEST(AbsoluteIRI, TakesDotSegmentsOut) {
  EXPECT_EQ(NormalFormOf(u"file:///a/./b/../c/."), u"file:///a/c");
  EXPECT_EQ(NormalFormOf(u"file:///a/%2e/b/%2E%2e/c"), u"file:///a/c");
}

TEST(AbsoluteIRI, LetsTheRootAbsorbParentSegments) {
  EXPECT_EQ(NormalFormOf(u"file:///../../etc"), u"file:///etc");
  EXPECT_EQ(NormalFormOf(u"file:///a/../../../etc"), u"file:///etc");
  EXPECT_EQ(NormalFormOf(u"http://host/../.."), u"http://host/");
}

TEST(AbsoluteIRI, KeepsLeadingParentSegmentsWhenRootless) {
  EXPECT_EQ(NormalFormOf(u"file:../../x"), u"file:../../x");
  EXPECT_EQ(NormalFormOf(u"file:a/../../x"), u"file:../x");
  EXPECT_EQ(NormalFormOf(u"file:a/.."), u"file:");
  EXPECT_EQ(NormalFormOf(u"file:."), u"file:");
}

TEST(AbsoluteIRI, NeverTakesAnEscapedSeparatorForASeparator) {
  EXPECT_EQ(NormalFormOf(u"file:///x%2F..%2Fetc/passwd"), u"file:///x%2F..%2Fetc/passwd");
  EXPECT_EQ(NormalFormOf(u"file:///a%2fb/../c"), u"file:///c");
  EXPECT_EQ(NormalFormOf(u"file:%2Fetc"), u"file:%2Fetc");
}

TEST(AbsoluteIRI, NeverGrowsAnAuthorityOutOfAPath) {
  EXPECT_EQ(NormalFormOf(u"file:a/..//evil"), u"file:evil");
  EXPECT_EQ(NormalFormOf(u"file:/a/..//evil"), u"file:///evil");
  EXPECT_EQ(NormalFormOf(u"memory:///a/../..//evil"), u"memory:////evil");
  EXPECT_EQ(AbsoluteIRI(u"memory:////evil").getHost(), u"");
}

TEST(AbsoluteIRI, DecodesWhatNeedsNoEscape) {
  EXPECT_EQ(NormalFormOf(u"file:///%41%7e%20%5c%3a%40"), u"file:///A~ \\:@");
  EXPECT_EQ(NormalFormOf(u"file:///%c3%a9"), u"file:///\u00E9");
  EXPECT_EQ(NormalFormOf(u"file:///\u00E9 b"), u"file:///\u00E9 b");
}

TEST(AbsoluteIRI, KeepsNeededEscapesInUpperCase) {
  EXPECT_EQ(NormalFormOf(u"file:///%25%3f%23%2f"), u"file:///%25%3F%23%2F");
  EXPECT_EQ(NormalFormOf(u"file:///%00%0a%7f%c2%85"), u"file:///%00%0A%7F%C2%85");
  EXPECT_EQ(NormalFormOf(u"file:///%ff%c3("), u"file:///%FF%C3(");
}

TEST(AbsoluteIRI, EscapesAStrayByteThatStandsRaw) { EXPECT_EQ(NormalFormOf(u"file:///a\xDCFF"), u"file:///a%FF"); }

TEST(AbsoluteIRI, DecodesASegmentAsOneRunOfBytes) {
  EXPECT_EQ(NormalFormOf(u"file:///\xDCC3%a9"), u"file:///\u00E9");
  EXPECT_EQ(NormalFormOf(u"file:///\xDCC3\xDCA9"), u"file:///\u00E9");
}

TEST(AbsoluteIRI, RefusesAQueryAndAFragment) {
  EXPECT_EQ(ReasonAgainst(u"file:///a?b"), "malformed identifier \"file:///a?b\": it has a query");
  EXPECT_EQ(ReasonAgainst(u"file:///a#b"), "malformed identifier \"file:///a#b\": it has a fragment");
}

TEST(AbsoluteIRI, RefusesMalformedEscapes) {
  for (const std::u16string text : {u"file:///%", u"file:///%4", u"file:///%zz", u"file:///%4g"}) {
    EXPECT_THAT(ReasonAgainst(text), testing::HasSubstr("'%' is not followed by two hexadecimal digits"));
  }
}

TEST(AbsoluteIRI, RefusesRawControlCharacters) {
  EXPECT_EQ(ReasonAgainst(u"file:///a\nb"),
            "malformed identifier \"file:///a\\u{A}b\": it holds a control character that is not escaped");
  EXPECT_THAT(ReasonAgainst(u"file:///\u0085"), testing::HasSubstr("control character"));
}

TEST(AbsoluteIRI, RefusesTextsWithoutAScheme) {
  for (const std::u16string text :
       {u"", u":", u"a", u"/a", u"a:/b", u"C:\\x", u"1a:/b", u"a b:/c", u"%66ile:/a", u"\u00E9a:/b"}) {
    EXPECT_THAT(ReasonAgainst(text), testing::HasSubstr("does not begin with a scheme"));
  }
}

TEST(AbsoluteIRI, RefusesHalvesOfCharacters) {
  EXPECT_EQ(ReasonAgainst(u"file:///\xD800x"),
            "malformed identifier \"file:///\\u{D800}x\": it holds half a character");
  EXPECT_THAT(ReasonAgainst(u"file:///\xDC00"), testing::HasSubstr("half a character"));
}

TEST(AbsoluteIRI, RefusesAnAuthorityWhoseDelimitersAreEscapedOrForbidden) {
  for (const std::u16string text :
       {u"http://a%40b/", u"http://a%2Fb/", u"http://a b/", u"http://a\\b/", u"http://a%00/"}) {
    EXPECT_THAT(ReasonAgainst(text), testing::HasSubstr("its authority holds a character that none may hold"));
  }
}

TEST(AbsoluteIRI, TellsItsParts) {
  const AbsoluteIRI iri(u"http://Host/a%20b/%2F%FF");

  EXPECT_EQ(iri.getScheme(), u"http");
  EXPECT_EQ(iri.getHost(), u"host");
  EXPECT_EQ(iri.getName(), u"/\xDCFF");
  EXPECT_EQ(iri.getPath(), u"/a b//\xDCFF");
  EXPECT_THAT(iri.getSegments(), ElementsAre(u"a b", u"/\xDCFF"));
  EXPECT_FALSE(iri.isRootless());
}

TEST(AbsoluteIRI, HasNoNameAtItsRootAndIsItsOwnParentThere) {
  const AbsoluteIRI root(u"file:///");

  EXPECT_EQ(root.getName(), u"");
  EXPECT_EQ(root.getPath(), u"/");
  EXPECT_THAT(root.getSegments(), IsEmpty());
  EXPECT_EQ(root.getParent(), root);
}

TEST(AbsoluteIRI, ReachesItsRootFromParentToParent) {
  EXPECT_EQ(AbsoluteIRI(u"file:///a/b").getParent(), AbsoluteIRI(u"file:///a"));
  EXPECT_EQ(AbsoluteIRI(u"file:///a").getParent(), AbsoluteIRI(u"file:///"));
  EXPECT_EQ(AbsoluteIRI(u"http://host/a").getParent(), AbsoluteIRI(u"http://host/"));
  EXPECT_EQ(AbsoluteIRI(u"memory:///a//b").getParent(), AbsoluteIRI(u"memory:///a"));
}

TEST(AbsoluteIRI, TellsTheRelativePathOfARootlessOne) {
  const AbsoluteIRI iri(u"file:rel/x");

  EXPECT_TRUE(iri.isRootless());
  EXPECT_EQ(iri.getPath(), u"rel/x");
  EXPECT_EQ(iri.getName(), u"x");
  EXPECT_EQ(iri.getHost(), u"");
  EXPECT_EQ(iri.getParent().toString(), u"file:rel");
  EXPECT_EQ(iri.getParent().getParent().toString(), u"file:");
}

TEST(AbsoluteIRI, HasNoNameWhereARootlessOneOnlyGoesUp) {
  for (const std::u16string text : {u"file:", u"file:..", u"file:../.."}) {
    const AbsoluteIRI iri(text);
    EXPECT_EQ(iri.getName(), u"");
    EXPECT_EQ(iri.getParent(), iri);
  }
  EXPECT_EQ(AbsoluteIRI(u"file:../x").getParent().toString(), u"file:..");
}

TEST(AbsoluteIRI, NamesAChild) {
  EXPECT_EQ(AbsoluteIRI(u"file:///").getChild(u"a").toString(), u"file:///a");
  EXPECT_EQ(AbsoluteIRI(u"file:///a").getChild(u"b?c").toString(), u"file:///a/b%3Fc");
  EXPECT_EQ(AbsoluteIRI(u"file:").getChild(u"a").toString(), u"file:a");
  EXPECT_EQ(AbsoluteIRI(u"file:..").getChild(u"a").toString(), u"file:../a");
  EXPECT_EQ(AbsoluteIRI(u"file:///").getChild(u"a:b").toString(), u"file:///a:b");
}

TEST(AbsoluteIRI, RefusesAChildThatIsNoName) {
  const AbsoluteIRI folder(u"file:///a");

  EXPECT_THAT([&] { return folder.getChild(u""); },
              FailsAbout(u"", "malformed identifier \"\": a name cannot be empty"));
  EXPECT_THAT([&] { return folder.getChild(u"."); },
              FailsAbout(u".", "malformed identifier \".\": a dot segment is no name"));
  EXPECT_THAT([&] { return folder.getChild(u".."); }, FailsWith(std::errc::invalid_argument));
  EXPECT_THAT([&] { return folder.getChild(u"a/b"); }, FailsWith(std::errc::invalid_argument));
  EXPECT_THAT([&] { return folder.getChild(std::u16string(1, u'\0')); }, FailsWith(std::errc::invalid_argument));
  EXPECT_THAT([&] { return folder.getChild(u"\xD800"); }, FailsWith(std::errc::invalid_argument));
}

TEST(AbsoluteIRI, IsWhatItsTextParsesTo) {
  RandomSource random = RandomSource::OfThisRun(31);
  SCOPED_TRACE(random.Describe());
  for (int round = 0; round < RandomSource::Rounds(50'000); ++round) {
    const std::u16string text = u"file:" + RandomIdentifierText(random, 8);
    std::optional<AbsoluteIRI> iri;
    try {
      iri.emplace(text);
    } catch (const Exception& problem) {
      ASSERT_EQ(problem.GetOffendingText(), text);
      continue;
    }
    const AbsoluteIRI again(iri->toString());
    ASSERT_EQ(again, *iri);
    ASSERT_EQ(again.getPath(), iri->getPath());
    ASSERT_EQ(again.getHost(), iri->getHost());
    ASSERT_EQ(again.isRootless(), iri->isRootless());
  }
}

TEST(AbsoluteIRI, GivesBackEveryNameOfAFile) {
  RandomSource random = RandomSource::OfThisRun(32);
  SCOPED_TRACE(random.Describe());
  const std::vector<AbsoluteIRI> folders{AbsoluteIRI(u"file:///"), AbsoluteIRI(u"memory://h/a"),
                                         AbsoluteIRI(u"file:r")};
  for (int round = 0; round < RandomSource::Rounds(50'000); ++round) {
    const std::u16string name = fl::filesystem::from_bytes(RandomNameBytes(random));
    const AbsoluteIRI& folder = random.Pick(folders);
    const AbsoluteIRI child = folder.getChild(name);
    ASSERT_EQ(child.getName(), name);
    ASSERT_EQ(child.getParent(), folder);
    ASSERT_EQ(AbsoluteIRI(child.toString()), child);
  }
}

std::string RandomRun(RandomSource& random, const std::vector<std::string>& pieces) {
  std::string text;
  for (std::size_t count = random.Below(7); count > 0; --count) text += random.Pick(pieces);
  return text;
}

bool IsAccepted(const std::string& text) {
  try {
    static_cast<void>(AbsoluteIRI(fl::filesystem::from_bytes(text)));
    return true;
  } catch (const Exception&) {
    return false;
  }
}

TEST(AbsoluteIRI, AcceptsNoAsciiTextThatAnIndependentParserRefuses) {
  RandomSource random = RandomSource::OfThisRun(33);
  SCOPED_TRACE(random.Describe());
  const std::vector<std::string> schemes = {"file:", "http:", "h+1.-:", "1a:", "+a:", ":", ""};
  // No ':' here: a port is digits to the other parser, for us it is a part of the authority like any other.
  const std::vector<std::string> pieces = {"/", "//",  ".", "..", "%2F", "%", "%4", "%41",
                                           "h", "a-b", "@", "80", "?",   "#", "+"};
  int accepted = 0;
  for (int round = 0; round < RandomSource::Rounds(50'000); ++round) {
    const std::string text = random.Pick(schemes) + RandomRun(random, pieces);
    if (!IsAccepted(text)) continue;
    ++accepted;
    ASSERT_TRUE(boost::urls::parse_uri(text).has_value()) << text;
  }
  EXPECT_GT(accepted, RandomSource::Rounds(5'000));
}

TEST(AbsoluteIRI, AcceptsTheUrlsOfAnIndependentParser) {
  RandomSource random = RandomSource::OfThisRun(34);
  SCOPED_TRACE(random.Describe());
  // None leaves it to chance whether there is an authority: an escaped delimiter in one is refused here, and only
  // here.
  const std::vector<std::string> beginnings = {
      "http:r", "http:/r", "http://h/", "http://%41.b-c/", "http://a@H:80/", "http://[::1]/", "http://~!$&'()*+,;=/"};
  const std::vector<std::string> pieces = {"/",   ".", "..", "%2F", "%41", "%00",      "h",
                                           "a-b", "@", ":",  ";=",  "~",   "!$&'()*+,"};
  int accepted = 0;
  for (int round = 0; round < RandomSource::Rounds(50'000); ++round) {
    const std::string text = random.Pick(beginnings) + RandomRun(random, pieces);
    if (!boost::urls::parse_uri(text).has_value()) continue;
    ++accepted;
    ASSERT_TRUE(IsAccepted(text)) << text;
  }
  EXPECT_GT(accepted, RandomSource::Rounds(40'000));
}

TEST(AbsoluteIRI, IsEqualWhenTheNormalFormsAre) {
  EXPECT_EQ(AbsoluteIRI(u"FILE:/a/../b"), AbsoluteIRI(u"file:///b"));
  EXPECT_NE(AbsoluteIRI(u"file:///a"), AbsoluteIRI(u"file:///A"));
  EXPECT_NE(AbsoluteIRI(u"file:///a"), AbsoluteIRI(u"memory:///a"));
}

TEST(AbsoluteIRI, IsOrderedByItsTextCodeUnitByCodeUnit) {
  EXPECT_LT(AbsoluteIRI(u"file:///a"), AbsoluteIRI(u"file:///b"));
  EXPECT_LT(AbsoluteIRI(u"file:///a b"), AbsoluteIRI(u"file:///a/b"));
  EXPECT_LT(AbsoluteIRI(u"file:///\U0001F600"), AbsoluteIRI(u"file:///\uFFFD"));
  EXPECT_FALSE(AbsoluteIRI(u"file:///a") < AbsoluteIRI(u"file:///a"));
}

TEST(AbsoluteIRI, HashesAlikeWhereverItIsHashed) {
  const AbsoluteIRI iri(u"file:///a");
  const AbsoluteIRI twin(u"FILE:///a/");

  EXPECT_EQ(iri.hashValue(), twin.hashValue());
  EXPECT_EQ(std::hash<AbsoluteIRI>()(iri), iri.hashValue());
  EXPECT_EQ(boost::hash<AbsoluteIRI>()(iri), iri.hashValue());
  EXPECT_EQ((std::unordered_set<AbsoluteIRI>{iri, twin}.size()), 1U);
  EXPECT_EQ((std::set<AbsoluteIRI>{iri, twin}.size()), 1U);
}

TEST(AbsoluteIRI, IsAPointerThatIsNeverNullNotEvenMovedFrom) {
  AbsoluteIRI iri(u"file:///a");

  const AbsoluteIRI moved =
      std::move(iri);  // NOLINT(performance-move-const-arg): that a move is a copy is what is tested

  EXPECT_EQ(iri.toString(), u"file:///a");  // NOLINT(bugprone-use-after-move)
  EXPECT_EQ(moved, iri);
  EXPECT_EQ(sizeof(AbsoluteIRI), sizeof(void*));
  EXPECT_TRUE(std::is_nothrow_copy_constructible_v<AbsoluteIRI>);
  EXPECT_TRUE(std::is_nothrow_move_constructible_v<AbsoluteIRI>);
}

TEST(AbsoluteIRI, IsItsOwnResolvedIdentifierWithoutAliases) {
  const AbsoluteIRI iri(u"nowhere:///does/not/exist");
  EXPECT_EQ(iri.getResolvedIRI(), iri);
}

TEST(AbsoluteIRI, MayBeCopiedAndReadByManyThreads) {
  const AbsoluteIRI shared(u"file:///a/b");
  std::vector<std::u16string> names(8);

  Quorvex::PathManagement::support::RunTogether(names.size(), [&](std::size_t index) {
    for (int round = 0; round < 1000; ++round) {
      AbsoluteIRI copy = shared;
      copy = copy.getParent().getChild(shared.getName());
      names[index] = copy.getName();
    }
  });

  EXPECT_THAT(names, testing::Each(u"b"));
}

}  // namespace
}  // namespace foundation::storage::vfs
