#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iterator>
#include <list>
#include <range/v3/view/remove_if.hpp>
#include <range/v3/view/transform.hpp>
#include <search_path_interfaces/any_range_adapter.hpp>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace Quorvex::PathManagement::detail {
namespace {

using testing::ElementsAre;

using Text = std::u16string;
using Texts = std::vector<std::u16string>;
using ForwardTexts = AnyRangeAdapter<Text>;
using BidirectionalTexts = AnyRangeAdapter<Text, boost::bidirectional_traversal_tag>;

// A receiver, as the exported functions are: the caller's range converts on the way in.
Texts Read(const ForwardTexts& texts) { return {texts.begin(), texts.end()}; }
Texts ReadBackwards(const BidirectionalTexts& texts) {
  return {std::make_reverse_iterator(texts.end()), std::make_reverse_iterator(texts.begin())};
}

TEST(AnyRangeAdapter, IsABoostRangeOfReferencesWithA64ByteIteratorBuffer) {
  using Buffer = boost::any_iterator_buffer<64>;
  using Forward = boost::any_range<Text, boost::forward_traversal_tag, Text&, long, Buffer>;
  using Bidirectional = boost::any_range<Text, boost::bidirectional_traversal_tag, Text&, long, Buffer>;

  EXPECT_TRUE((std::is_base_of_v<Forward, ForwardTexts>));
  EXPECT_TRUE((std::is_base_of_v<Bidirectional, BidirectionalTexts>));
  EXPECT_TRUE((std::is_same_v<decltype(*std::declval<const ForwardTexts&>().begin()), Text&>));
}

TEST(AnyRangeAdapter, ReadsAContainerFrontToBack) {
  Texts texts = {u"a", u"b", u"c"};
  const Texts constTexts = texts;
  const std::list<Text> listedTexts(texts.begin(), texts.end());
  const Text array[] = {u"a", u"b"};

  EXPECT_THAT(Read(texts), ElementsAre(u"a", u"b", u"c"));
  EXPECT_THAT(Read(constTexts), ElementsAre(u"a", u"b", u"c"));
  EXPECT_THAT(Read(listedTexts), ElementsAre(u"a", u"b", u"c"));
  EXPECT_THAT(Read(array), ElementsAre(u"a", u"b"));
}

TEST(AnyRangeAdapter, OfAnEmptyContainerIsEmpty) {
  const Texts none;

  EXPECT_THAT(Read(none), ElementsAre());
  EXPECT_THAT(ReadBackwards(none), ElementsAre());
}

TEST(AnyRangeAdapter, RefersToTheElementsThemselves) {
  const Texts texts = {u"a", u"b"};

  const ForwardTexts range(texts);

  EXPECT_EQ(&*range.begin(), &texts.front());
}

TEST(AnyRangeAdapter, ReadsALazyViewWhileItIsComputed) {
  const Texts texts = {u"a", u"drop", u"b", u"drop"};
  int asked = 0;
  auto view = texts | ranges::views::remove_if([&asked](const Text& text) {
                ++asked;
                return text == u"drop";
              });

  const ForwardTexts range(view);
  const int askedWhenMade = asked;

  EXPECT_THAT(Texts(range.begin(), range.end()), ElementsAre(u"a", u"b"));
  EXPECT_GT(asked, askedWhenMade);
}

TEST(AnyRangeAdapter, CanBeReadBackwardsWhenItIsBidirectional) {
  const Texts texts = {u"a", u"b", u"c"};
  const std::list<Text> listedTexts(texts.begin(), texts.end());
  auto view = texts | ranges::views::remove_if([](const Text& text) { return text == u"b"; });

  EXPECT_THAT(ReadBackwards(texts), ElementsAre(u"c", u"b", u"a"));
  EXPECT_THAT(ReadBackwards(listedTexts), ElementsAre(u"c", u"b", u"a"));
  EXPECT_THAT(ReadBackwards(view), ElementsAre(u"c", u"a"));
}

TEST(AnyRangeAdapter, CanBeReadMoreThanOnce) {
  const Texts texts = {u"a", u"b"};

  const ForwardTexts range(texts);

  EXPECT_THAT(Texts(range.begin(), range.end()), ElementsAre(u"a", u"b"));
  EXPECT_THAT(Texts(range.begin(), range.end()), ElementsAre(u"a", u"b"));
}

TEST(AnyRangeAdapter, CopiesAsARangeNotAsARangeOfRanges) {
  const Texts texts = {u"a", u"b"};
  ForwardTexts original(texts);

  const ForwardTexts copy(original);
  const ForwardTexts moved(std::move(original));

  EXPECT_THAT(Read(copy), ElementsAre(u"a", u"b"));
  EXPECT_EQ(&*moved.begin(), &texts.front());
}

TEST(AnyRangeAdapter, RefusesASourceThatIsAboutToVanish) {
  EXPECT_TRUE((std::is_convertible_v<Texts&, ForwardTexts>));
  EXPECT_TRUE((std::is_convertible_v<const Texts&, ForwardTexts>));
  EXPECT_FALSE((std::is_constructible_v<ForwardTexts, Texts>));
  EXPECT_FALSE((std::is_constructible_v<ForwardTexts, const Texts>));
  EXPECT_FALSE((std::is_constructible_v<ForwardTexts, std::list<Text>&&>));
}

TEST(AnyRangeAdapter, RefusesAViewThatMakesItsValuesAsItGoes) {
  const auto made = [](const Text& text) { return text + u"!"; };
  const auto referred = [](const Text& text) -> const Text& { return text; };
  using Making = decltype(std::declval<const Texts&>() | ranges::views::transform(made));
  using Referring = decltype(std::declval<const Texts&>() | ranges::views::transform(referred));

  static_assert(!std::is_constructible_v<ForwardTexts, Making&>);
  static_assert(!std::is_constructible_v<ForwardTexts, const Making&>);
  static_assert(!std::is_constructible_v<BidirectionalTexts, Making&>);
  static_assert(std::is_constructible_v<ForwardTexts, Referring&>, "it is the making that is refused, not the view");

  const Texts texts = {u"a", u"b"};
  auto view = texts | ranges::views::transform(referred);
  EXPECT_EQ(&*ForwardTexts(view).begin(), &texts.front());
}

TEST(AnyRangeAdapter, RefusesElementsOfAnotherType) {
  static_assert(!std::is_constructible_v<ForwardTexts, std::vector<std::string>&>);
  static_assert(!std::is_constructible_v<ForwardTexts, std::vector<int>&>);
  static_assert(!std::is_constructible_v<ForwardTexts, std::vector<Texts>&>);
  static_assert(!std::is_constructible_v<ForwardTexts, Text&>, "a text is a range of characters");
  static_assert(!std::is_constructible_v<ForwardTexts, int&>);

  // A conversion would make a text that nothing holds.
  static_assert(!std::is_constructible_v<ForwardTexts, std::vector<const char16_t*>&>);
  static_assert(!std::is_constructible_v<BidirectionalTexts, std::list<const char16_t*>&>);

  static_assert(std::is_constructible_v<AnyRangeAdapter<int>, std::vector<int>&>);
}

}  // namespace
}  // namespace Quorvex::PathManagement::detail
