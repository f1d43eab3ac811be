#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <editing/split_at_any_of.hpp>
#include <list>
#include <string>
#include <vector>

namespace Quorvex::PathManagement::detail {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Texts = std::vector<std::u16string>;

TEST(SplitAtAnyOf, CutsAtEachCharacterOfTheSeparatorsByItself) {
  EXPECT_THAT(SplitAtAnyOf<Texts>(u"a;b:c|d", u";:|"), ElementsAre(u"a", u"b", u"c", u"d"));
  EXPECT_THAT(SplitAtAnyOf<Texts>(u"a:;b;:c", u";:"), ElementsAre(u"a", u"b", u"c"));
}

TEST(SplitAtAnyOf, CutsAtNothingElse) {
  EXPECT_THAT(SplitAtAnyOf<Texts>(u" a\tb,c.d/e ", u";"), ElementsAre(u" a\tb,c.d/e "));
}

TEST(SplitAtAnyOf, ToleratesASeparatorThatIsListedTwice) {
  EXPECT_THAT(SplitAtAnyOf<Texts>(u"a;b", u";;"), ElementsAre(u"a", u"b"));
}

TEST(SplitAtAnyOf, FillsTheContainerThatIsAskedFor) {
  EXPECT_THAT(SplitAtAnyOf<std::list<std::u16string>>(u"/a//b/", u"/"), ElementsAre(u"a", u"b"));
  EXPECT_THAT(SplitAtAnyOf<std::list<std::u16string>>(u"/", u"/"), IsEmpty());
}

}  // namespace
}  // namespace Quorvex::PathManagement::detail
