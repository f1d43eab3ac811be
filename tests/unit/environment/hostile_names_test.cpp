#include <gmock/gmock.h>

#include <fl/filesystem/text_codec.hpp>
#include <string>
#include <vector>

#include "disk_folder.hpp"
#include "memory_storage.hpp"
#include "shown.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using fl::filesystem::from_bytes;
using fl::filesystem::to_bytes;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// The bytes of file names that something, somewhere, trips over.
const std::vector<std::string>& AllHostileNames() {
  static const std::vector<std::string> names = {
      "new\nline",
      "\x1b[31mred",
      "\xFF\xFE",
      std::string(255, 'n'),
      " leading",
      "trailing ",
      "-rf",
      "\xE2\x80\xAEgnp.exe",  // a right-to-left override
      "back\\slash",
      "co:lon",
      "semi;colon",
      "\x7F",
      "%2F",
      "%",
      "100%zz",
      "a?b#c",
      "\xC3\xA9",      // e with acute accent, composed
      "e\xCC\x81",     // the same, decomposed
      "\xC3",          // half of a character
      "\xED\xA0\x80",  // a surrogate in UTF-8
      "\xF0\x9F\x98\x80",
      "...",
      ".hid.den",
      "*?[a-z]",
      "file:",
      "a\tb",
  };
  return names;
}

// A name that is no longer than the system allows, in front of which a mark is put.
std::string Shortened(const std::string& name) { return name.substr(0, 254); }

class HostileNames : public testing::TestWithParam<std::size_t> {
 protected:
  [[nodiscard]] static const std::string& Bytes() { return AllHostileNames()[GetParam()]; }
  [[nodiscard]] static std::u16string Text() { return from_bytes(Bytes()); }
};

TEST_P(HostileNames, SurviveTheWayFromDiskAndBack) {
  const DiskFolder disk;
  disk.AddFile(Bytes());

  const auto path = ReadPath({disk.LocationOf()});
  const auto items = path->GetMainEntries()->at(0)->GetItems();

  ASSERT_THAT(*items, SizeIs(1));
  EXPECT_EQ(to_bytes(items->at(0)->baseName + items->at(0)->extension), Bytes());
  EXPECT_THAT(AllShown(path->GetProblems()), IsEmpty());
}

TEST_P(HostileNames, AreFoundOnDiskAndInMemoryUnderEveryPolicy) {
  const DiskFolder disk;
  disk.AddFile(Bytes());
  MemoryStorage storage;
  storage.WithFiles({u"/m/" + Text()});

  const auto path = ReadPath({disk.LocationOf(), InMemory(u"/m")});

  for (const auto policy : {kCaseSensitive, kCaseInsensitive, kNative}) {
    EXPECT_THAT(path->FindAllInScope(kEveryKind, Exactly(Text()).Target(), policy), SizeIs(2));
  }
}

TEST_P(HostileNames, ServeAsMainFoldersAndClassFoldersAndPackages) {
  const DiskFolder disk;
  const std::string folder = Shortened(Bytes());
  disk.AddFolder(folder);
  disk.AddFolder(folder + "/@" + folder);
  disk.AddFolder(folder + "/+" + folder);
  disk.AddFile(folder + "/+" + folder + "/f");

  const auto path = ReadPath({disk.LocationOf(folder)});

  EXPECT_THAT(path->GetProblems(), IsEmpty());
  ASSERT_THAT(path->GetMethodEntries(), SizeIs(2));
  const auto classes = path->GetMethodEntriesByName(Only(PathEntryType::Main), from_bytes(folder), kNative);
  EXPECT_THAT(classes, ElementsAre(path->GetMethodEntries()[0]));
  EXPECT_EQ(path->GetPathEntryFromAbsoluteIRI(disk.LocationOf(folder + "/+" + folder), kNative),
            path->GetMethodEntries()[1]);
  const Wanted inPackage = Exactly(from_bytes(folder + "/+" + folder + "/f"));
  EXPECT_TRUE(path->FindFirstInScope(kEveryKind, inPackage.Target(), kNative));
}

INSTANTIATE_TEST_SUITE_P(Each, HostileNames, testing::Range(std::size_t{0}, AllHostileNames().size()));

TEST(HostileNamesTogether, AreAllListedInOneFolder) {
  const DiskFolder disk;
  for (const auto& name : AllHostileNames()) disk.AddFile(name);

  const auto path = ReadPath({disk.LocationOf()});

  EXPECT_THAT(*path->GetMainEntries()->at(0)->GetItems(), SizeIs(AllHostileNames().size()));
  EXPECT_THAT(path->GetProblems(), IsEmpty());
}

TEST(HostileNamesTogether, KeepComposedAndDecomposedLettersApart) {
  MemoryStorage storage;
  storage.WithFiles({u"/m/\u00E9", u"/m/e\u0301"});
  const auto path = storage.Path({u"/m"});

  for (const auto policy : {kCaseSensitive, kCaseInsensitive, kNative}) {
    EXPECT_THAT(path->FindAllInScope(kEveryKind, Exactly(u"\u00E9").Target(), policy), SizeIs(1));
  }
}

TEST(HostileNamesTogether, MayBeAHundredThousandInOneFolder) {
  constexpr std::size_t kCount = 100'000;
  MemoryStorage storage;
  const auto nameOf = [](std::size_t number) { return u"n" + from_bytes(std::to_string(kCount + number)) + u".x"; };
  for (std::size_t number = 0; number < kCount; ++number) storage.GetProvider().AddFile(u"/m/" + nameOf(number));

  const auto path = storage.Path({u"/m"});

  EXPECT_THAT(*path->GetMainEntries()->at(0)->GetItems(), SizeIs(kCount));
  for (std::size_t number = 0; number < kCount; number += 9'999) {
    EXPECT_TRUE(path->FindFirstInScope(kEveryKind, Exactly(nameOf(number)).Target(), kNative));
  }
  EXPECT_TRUE(path->FindFirstInScope(kEveryKind, Exactly(u"N199999.X").Target(), kCaseInsensitive));
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
