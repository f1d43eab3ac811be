#include "forbidden_names.hpp"

#include <gmock/gmock.h>

#include <unit/environment/memory_storage.hpp>

#include "told_findings.hpp"
#include "windows_name.hpp"

namespace vornixpath {
namespace {

using Quorvex::PathEnvironment::MemoryStorage;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> ForbiddenOn(const MemoryStorage& storage, const std::vector<std::u16string>& folders) {
  return InWords(ForbiddenNames(Examination(storage.Path(folders)).Get()));
}

TEST(NameOnWindows, IsNotThatOfADeviceWhateverItsExtensionAndLetterCase) {
  EXPECT_EQ(ReasonAgainst(u"CON"), "CON is a device there");
  EXPECT_EQ(ReasonAgainst(u"nul.vnx"), "nul is a device there");
  EXPECT_EQ(ReasonAgainst(u"Aux.tar.gz"), "Aux is a device there");
  EXPECT_EQ(ReasonAgainst(u"prn .vnx"), "prn is a device there");
  for (const std::u16string name : {u"COM1", u"com9", u"LPT1.x", u"lpt9"}) EXPECT_NE(ReasonAgainst(name), "");
}

TEST(NameOnWindows, MayBeginWithThatOfADevice) {
  for (const std::u16string name :
       {u"CONS", u"com", u"COM0", u"com10", u"lpt.vnx", u"xCON", u"+con", u"@nul", u"x.con", u".con", u"c\u00F6n"}) {
    EXPECT_EQ(ReasonAgainst(name), "");
  }
}

TEST(NameOnWindows, HoldsNoneOfSomeCharacters) {
  for (const char16_t refused : std::u16string_view(u"<>:\"|?*\\")) {
    EXPECT_EQ(ReasonAgainst(std::u16string(u"a") + refused + u"b"),
              std::string("it holds the character ") + static_cast<char>(refused));
  }
  EXPECT_EQ(ReasonAgainst(u"a\u001Bb"), "it holds a control character");
  EXPECT_EQ(ReasonAgainst(u"a\u007Fb !#$%&'()+,-;=@[]^_`{}~\u00E4"), "");
}

TEST(NameOnWindows, EndsInNoDotAndNoBlank) {
  EXPECT_EQ(ReasonAgainst(u"a."), "it ends in a dot");
  EXPECT_EQ(ReasonAgainst(u"a "), "it ends in a blank");
  EXPECT_EQ(ReasonAgainst(u" .a b"), "");
  EXPECT_EQ(ReasonAgainst(u""), "");
}

TEST(ForbiddenNames, AreThoseOfFilesThatTakePartInLookups) {
  const MemoryStorage storage =
      std::move(MemoryStorage().WithFiles({u"/a/con.vnx", u"/a/con.txt", u"/a/f.vnx", u"/a/+p/what?.vnx",
                                           u"/a/@K/private/aux.vnx", u"/a/resources/nul.vnx", u"/a/sub/nul.vnx"}));

  EXPECT_THAT(ForbiddenOn(storage, {u"/a"}),
              ElementsAre("note forbidden-name: /a/con.vnx (1)", "note forbidden-name: /a/@K/private/aux.vnx (1)",
                          "note forbidden-name: /a/+p/what?.vnx (1)"));
}

TEST(ForbiddenNames, AreThoseOfFolders) {
  const MemoryStorage storage =
      std::move(MemoryStorage().WithFolders({u"/x:y/inner", u"/x:y/aux", u"/a/+p.", u"/a/+p./@K "}));

  EXPECT_THAT(ForbiddenOn(storage, {u"/x:y/inner", u"/a", u"/x:y/aux"}),
              ElementsAre("note forbidden-name: /a/+p. (2)", "note forbidden-name: /a/+p./@K  (2)",
                          "note forbidden-name: /x:y/aux (3)"));
}

TEST(ForbiddenNames, AreToldOnceThoughTheirFolderIsOnThePathTwice) {
  const MemoryStorage storage = std::move(MemoryStorage().WithFiles({u"/a/+p/con.vnx"}));

  EXPECT_THAT(ForbiddenOn(storage, {u"/a", u"/a/+p"}), ElementsAre("note forbidden-name: /a/+p/con.vnx (1)"));
}

TEST(ForbiddenNames, AreNoneOnAPathOfUsualNames) {
  const MemoryStorage storage = std::move(MemoryStorage().WithFiles({u"/a/f.vnx", u"/a/+geo/@Point/Point.vnx"}));

  EXPECT_THAT(ForbiddenOn(storage, {u"/", u"/a"}), IsEmpty());
}

}  // namespace
}  // namespace vornixpath
