// What holds for every text on its way to an identifier and back.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fl/filesystem/displayed_text.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <optional>
#include <search_path_utilities/path_editing.hpp>
#include <string>
#include <support/random_text.hpp>

namespace Quorvex::PathManagement {
namespace {

using fl::filesystem::from_bytes;
using fl::filesystem::to_displayed_text;
using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::Exception;
using foundation::support::RandomIdentifierText;
using foundation::support::RandomNameBytes;
using support::RandomSource;
using testing::HasSubstr;

std::u16string RandomAbsolutePath(RandomSource& random) {
  std::string bytes;
  for (std::size_t depth = random.Below(5); depth > 0; --depth) bytes += "/" + RandomNameBytes(random);
  return bytes.empty() ? u"/" : from_bytes(bytes);
}

TEST(StringAndIRI, GiveBackEveryAbsolutePathInNormalFormStrayBytesIncluded) {
  RandomSource random = RandomSource::OfThisRun(3111);
  SCOPED_TRACE(random.Describe());

  for (int round = 0; round < RandomSource::Rounds(20'000); ++round) {
    const std::u16string text = RandomAbsolutePath(random);
    ASSERT_EQ(GetStringFromIRI(GetIRIFromString(text)), text) << to_displayed_text(text);
  }
}

TEST(StringAndIRI, TakeTheTextOfAnIdentifierForTheSameIdentifier) {
  RandomSource random = RandomSource::OfThisRun(3112);
  SCOPED_TRACE(random.Describe());

  for (int round = 0; round < RandomSource::Rounds(20'000); ++round) {
    const AbsoluteIRI iri = GetIRIFromString(RandomAbsolutePath(random));
    ASSERT_EQ(GetIRIFromString(iri.toString()), iri) << to_displayed_text(iri.toString());
  }
}

/// What became of one text.
struct Outcome {
  std::optional<AbsoluteIRI> iri;
  std::string complaint;
  std::u16string offendingText;
};

Outcome Convert(const std::u16string& text) {
  try {
    return {GetIRIFromString(text), {}, {}};
  } catch (const Exception& problem) {
    return {std::nullopt, problem.what(), problem.GetOffendingText()};
  }
}

TEST(StringAndIRI, ReadAnyTextAsAnIdentifierInNormalFormOrRefuseItByName) {
  RandomSource random = RandomSource::OfThisRun(3113);
  SCOPED_TRACE(random.Describe());
  int accepted = 0;
  int refused = 0;

  for (int round = 0; round < RandomSource::Rounds(50'000); ++round) {
    const std::u16string text =
        random.Pick<std::u16string>({u"", u"file://", u"memory:///"}) + RandomIdentifierText(random, 8);
    SCOPED_TRACE(to_displayed_text(text));

    const Outcome outcome = Convert(text);

    if (outcome.iri) {
      ++accepted;
      ASSERT_EQ(AbsoluteIRI(outcome.iri->toString()), *outcome.iri);
    } else {
      ++refused;
      ASSERT_THAT(outcome.complaint, HasSubstr(to_displayed_text(outcome.offendingText)));
      ASSERT_FALSE(outcome.offendingText.empty());
    }
  }
  EXPECT_GT(accepted, RandomSource::Rounds(1'000));
  EXPECT_GT(refused, RandomSource::Rounds(1'000));
}

TEST(StringAndIRI, QuoteAMalformedIdentifierAsItWasWritten) {
  RandomSource random = RandomSource::OfThisRun(3114);
  SCOPED_TRACE(random.Describe());

  for (int round = 0; round < RandomSource::Rounds(5'000); ++round) {
    const auto names = random.ListOf(4, [&] { return random.Pick<std::u16string>({u"a", u"b c", u"\u00E9", u"x.y"}); });
    std::u16string text = u"memory://";
    for (const auto& name : names) text += u"/" + name;
    text += random.Pick<std::u16string>({u"/?q", u"/#f", u"/%zz", u"/\u0001", u"/\xD800"});

    const Outcome outcome = Convert(text);

    ASSERT_FALSE(outcome.iri) << to_displayed_text(text);
    ASSERT_THAT(outcome.complaint, HasSubstr("\"" + to_displayed_text(text) + "\""));
    ASSERT_EQ(outcome.offendingText, text);
  }
}

}  // namespace
}  // namespace Quorvex::PathManagement
