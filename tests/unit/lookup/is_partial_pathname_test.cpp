#include <gtest/gtest.h>

#include <search_path_utilities/lookup.hpp>
#include <string>

namespace Quorvex::PathManagement {
namespace {

TEST(IsPartialPathname, FindsASeparatorWhereverItStandsInANameOfAnyLength) {
  for (std::size_t length = 0; length < 70; ++length) {
    const std::u16string plain(length, u'x');
    ASSERT_FALSE(IsPartialPathname(plain)) << length;
    for (std::size_t position = 0; position < length; ++position) {
      std::u16string name = plain;
      name[position] = u'/';
      ASSERT_TRUE(IsPartialPathname(name)) << position << " of " << length;
    }
  }
}

TEST(IsPartialPathname, TakesNoOtherCharacterForASeparator) {
  for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
    const std::u16string name(11, static_cast<char16_t>(unit));
    ASSERT_EQ(IsPartialPathname(name), unit == u'/') << unit;
    ASSERT_EQ(IsPartialPathname(name.substr(0, 3)), unit == u'/') << unit;
  }
}

TEST(IsPartialPathname, LooksAtNothingBeyondTheName) {
  const std::u16string text = u"/plain name/";

  EXPECT_FALSE(IsPartialPathname(std::u16string_view(text).substr(1, 10)));
  EXPECT_FALSE(IsPartialPathname(std::u16string_view(text).substr(1, 3)));
}

}  // namespace
}  // namespace Quorvex::PathManagement
