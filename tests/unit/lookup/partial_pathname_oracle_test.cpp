// The match of partial pathnames against a literal recursion: all small inputs, then random larger ones.

#include <gtest/gtest.h>

#include <fl/filesystem/displayed_text.hpp>
#include <fl/filesystem/path.hpp>
#include <foundation/storage/vfs/iri_conversion.hpp>
#include <memory>
#include <oracle/partial_pathname.hpp>
#include <search_path_utilities/lookup.hpp>
#include <string>
#include <support/fake_entry.hpp>
#include <support/random_source.hpp>
#include <vector>

namespace Quorvex::PathManagement {
namespace {

using oracle::Components;
using support::FakeEntry;
using support::RandomSource;

std::u16string PathOf(const Components& folder) {
  std::u16string text;
  for (const auto& name : folder) text += u"/" + name;
  return text.empty() ? u"/" : text;
}

std::shared_ptr<const FakeEntry> EntryAt(const Components& folder) {
  const auto location = foundation::storage::vfs::toAbsoluteIRI(u"file", fl::filesystem::path(PathOf(folder)));
  return FakeEntry::Create(location, PathEntryType::Main, support::Folder("unnamed"), {});
}

/// How often each answer came.
struct Tally {
  int matches = 0;
  int differences = 0;
};

void ExpectAgreement(const Components& partial, const std::shared_ptr<const FakeEntry>& entry, const Components& folder,
                     FilenameMatchingPolicy policy, Tally& tally) {
  const bool expected = oracle::DoesPartialPathnameMatch(
      partial, folder, [&](const auto& wanted, const auto& name) { return entry->AreSame(wanted, name, policy); });

  const bool answer = DoesPartialPathnameMatchPathEntryIRI(partial, entry, policy);

  ++(expected ? tally.matches : tally.differences);
  ASSERT_EQ(answer, expected) << fl::filesystem::to_displayed_text(PathOf(partial)) << " in "
                              << fl::filesystem::to_displayed_text(PathOf(folder));
}

/// Every sequence of at most `longest` of `names`.
std::vector<Components> SequencesOf(const Components& names, std::size_t longest) {
  std::vector<Components> sequences(1);
  std::size_t firstOfLength = 0;
  for (std::size_t length = 0; length < longest; ++length) {
    const std::size_t end = sequences.size();
    for (; firstOfLength < end; ++firstOfLength) {
      for (const auto& name : names) {
        Components longer = sequences[firstOfLength];
        longer.push_back(name);
        sequences.push_back(longer);
      }
    }
  }
  return sequences;
}

TEST(PartialPathnameOracle, AgreesOnEverySmallInput) {
  const auto partials = SequencesOf({u"a", u"+a", u"@a", u"private"}, 3);
  Tally tally;

  for (const auto& folder : SequencesOf({u"a", u"b", u"+a", u"@a", u"private"}, 3)) {
    const auto entry = EntryAt(folder);
    for (const auto& partial : partials) {
      ASSERT_NO_FATAL_FAILURE(ExpectAgreement(partial, entry, folder, FilenameMatchingPolicy::CaseSensitive, tally));
    }
  }
  EXPECT_GT(tally.matches, 100);
  EXPECT_GT(tally.differences, 100);
}

/// Mostly a tail of `folder`, in which marks are left out and letters changed; else anything.
Components RandomPartial(RandomSource& random, const Components& folder, const Components& names) {
  if (random.OneIn(4)) return random.ListOf(6, [&] { return random.Pick(names); });

  Components partial(folder.begin() + static_cast<std::ptrdiff_t>(random.Below(folder.size() + 1)), folder.end());
  for (auto& name : partial) {
    const bool isMarked = name.starts_with(u'+') || name.starts_with(u'@');
    if (isMarked && random.OneIn(2)) name.erase(0, 1);
    if (random.OneIn(12)) name = random.Pick(names);
  }
  return partial;
}

TEST(PartialPathnameOracle, AgreesOnRandomInput) {
  const Components names = {u"a",  u"A",   u"b",         u"+a",     u"+A",      u"@a",      u"@B",
                            u"+",  u"@",   u"@@a",       u"+@a",    u"private", u"Private", u"resources",
                            u"%a", u"a b", u"RESOURCES", u"\u00E9", u"privates"};
  const std::vector<FilenameMatchingPolicy> policies = {
      FilenameMatchingPolicy::CaseSensitive, FilenameMatchingPolicy::CaseInsensitive, FilenameMatchingPolicy::Native};
  RandomSource random = RandomSource::OfThisRun(4301);
  SCOPED_TRACE(random.Describe());
  Tally tally;

  for (int round = 0; round < 20'000; ++round) {
    const Components folder = random.ListOf(12, [&] { return random.Pick(names); });
    const Components partial = RandomPartial(random, folder, names);
    ASSERT_NO_FATAL_FAILURE(ExpectAgreement(partial, EntryAt(folder), folder, random.Pick(policies), tally));
  }
  EXPECT_GT(tally.matches, 1'000);
  EXPECT_GT(tally.differences, 1'000);
}

}  // namespace
}  // namespace Quorvex::PathManagement
