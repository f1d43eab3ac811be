// The match of partial pathnames against a literal recursion: all small inputs, then random larger ones.

#include <gtest/gtest.h>

#include <fl/filesystem/displayed_text.hpp>
#include <fl/filesystem/path.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/iri_conversion.hpp>
#include <memory>
#include <oracle/partial_pathname.hpp>
#include <search_path_utilities/lookup.hpp>
#include <string>
#include <support/fake_entry.hpp>
#include <support/fake_path.hpp>
#include <support/random_source.hpp>
#include <vector>

namespace Quorvex::PathManagement {
namespace {

using oracle::Components;
using support::APath;
using support::FakeEntry;
using support::FakePath;
using support::Folder;
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
  int strictMatches = 0;
};

void ExpectAgreement(const Components& partial, const std::shared_ptr<const FakeEntry>& entry, const Components& folder,
                     FilenameMatchingPolicy policy, Tally& tally) {
  const auto areSame = [&](const auto& wanted, const auto& name) { return entry->AreSame(wanted, name, policy); };
  const bool lenient = oracle::DoesPartialPathnameMatch(partial, folder, areSame);
  const bool strict = oracle::DoesPartialPathnameStrictlyMatch(partial, folder, areSame);
  SCOPED_TRACE(fl::filesystem::to_displayed_text(PathOf(partial)) + " in " +
               fl::filesystem::to_displayed_text(PathOf(folder)));

  ++(lenient ? tally.matches : tally.differences);
  tally.strictMatches += strict ? 1 : 0;
  ASSERT_EQ(DoesPartialPathnameMatchPathEntryIRI(partial, entry, policy), lenient);
  ASSERT_EQ(DoesPartialPathnameStrictlyMatchPathEntryIRI(partial, *entry, policy), strict);
  ASSERT_EQ(DoesPartialPathnameStrictlyMatchPathString(partial, PathOf(folder), areSame), strict);
  ASSERT_TRUE(lenient || !strict) << "every strict match is a lenient one";
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
  EXPECT_GT(tally.strictMatches, 100);
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

  for (int round = 0; round < RandomSource::Rounds(20'000); ++round) {
    const Components folder = random.ListOf(12, [&] { return random.Pick(names); });
    const Components partial = RandomPartial(random, folder, names);
    ASSERT_NO_FATAL_FAILURE(ExpectAgreement(partial, EntryAt(folder), folder, random.Pick(policies), tally));
  }
  EXPECT_GT(tally.matches, RandomSource::Rounds(1'000));
  EXPECT_GT(tally.differences, RandomSource::Rounds(1'000));
  EXPECT_GT(tally.strictMatches, RandomSource::Rounds(1'000));
}

/// A main entry at `mainFolder` and, one inside another, the special subfolders of these names.
std::shared_ptr<const FakePath> PathAlong(const Components& mainFolder, const Components& methodFolders) {
  Folder inner("innermost");
  for (auto name = methodFolders.rbegin(); name != methodFolders.rend(); ++name) {
    Folder folder(fl::filesystem::to_bytes(*name));
    inner = name == methodFolders.rbegin() ? folder : folder.With(inner);
  }
  Folder outermost(fl::filesystem::to_bytes(PathOf(mainFolder)));
  return APath().With(methodFolders.empty() ? outermost : outermost.With(inner)).Build();
}

TEST(PartialPathnameOracle, AgreesAlongRandomChainsOfEntries) {
  const Components names = {u"a", u"b", u"A", u"+a", u"@a", u"private", u"a b"};
  const Components methodNames = {u"+a", u"+B", u"@a", u"@b", u"private", u"resources"};
  const std::vector<FilenameMatchingPolicy> policies = {
      FilenameMatchingPolicy::CaseSensitive, FilenameMatchingPolicy::CaseInsensitive, FilenameMatchingPolicy::Native};
  RandomSource random = RandomSource::OfThisRun(4302);
  SCOPED_TRACE(random.Describe());
  Tally tally;

  for (int round = 0; round < RandomSource::Rounds(20'000); ++round) {
    const Components mainFolder = random.ListOf(3, [&] { return random.Pick(names); });
    const Components methodFolders = random.ListOf(4, [&] { return random.Pick(methodNames); });
    Components whole = mainFolder;
    whole.insert(whole.end(), methodFolders.begin(), methodFolders.end());
    const Components partial = RandomPartial(random, whole, names);
    const FilenameMatchingPolicy policy = random.Pick(policies);
    const auto path = PathAlong(mainFolder, methodFolders);
    const auto entry = path->EntryAt(fl::filesystem::to_bytes(PathOf(whole)));

    const bool expected = oracle::DoesPartialPathnameMatchAlong(
        methodFolders, mainFolder, partial,
        [&](const auto& left, const auto& right) { return entry->AreSame(left, right, policy); });

    ++(expected ? tally.matches : tally.differences);
    ASSERT_EQ(DoesPartialPathnameMatchPathEntryIRI(*path, partial, entry, policy), expected)
        << fl::filesystem::to_displayed_text(PathOf(partial)) << " in "
        << fl::filesystem::to_displayed_text(PathOf(whole));
  }
  EXPECT_GT(tally.matches, RandomSource::Rounds(1'000));
  EXPECT_GT(tally.differences, RandomSource::Rounds(1'000));
}

}  // namespace
}  // namespace Quorvex::PathManagement
