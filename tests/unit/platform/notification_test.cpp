#include <gmock/gmock.h>

#include <foundation/core/except/notification.hpp>
#include <string>
#include <utility>
#include <variant>

namespace foundation::core::except {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const NotificationMessage kFirst({std::u16string(u"/a")}, "first", "one");
const NotificationMessage kSecond({}, "second", "two");

TEST(NotificationMessage, HoldsItsArgumentsInOrderAndWhereItsTextIsFound) {
  const NotificationMessage message({std::u16string(u"/a"), 2.5, std::int64_t{-7}}, "VORNIX:mpath", "invalidLocation");

  EXPECT_THAT(message.GetArguments(), ElementsAre(NotificationArgument(std::u16string(u"/a")),
                                                  NotificationArgument(2.5), NotificationArgument(std::int64_t{-7})));
  EXPECT_EQ(message.GetIdentifier(), "VORNIX:mpath");
  EXPECT_EQ(message.GetKey(), "invalidLocation");
}

TEST(NotificationMessage, KeepsEveryCodeUnitOfAnArgument) {
  const std::u16string strange(u"/\0\xDC80\xD83D\xDE00 ", 6);

  const NotificationMessage message({strange}, "part", "key");

  EXPECT_EQ(std::get<std::u16string>(message.GetArguments().at(0)), strange);
}

TEST(NotificationMessage, IsEqualOnlyWhenArgumentsIdentifierAndKeyAre) {
  EXPECT_EQ(kFirst, NotificationMessage({std::u16string(u"/a")}, "first", "one"));
  EXPECT_NE(kFirst, NotificationMessage({std::u16string(u"/b")}, "first", "one"));
  EXPECT_NE(kFirst, NotificationMessage({std::u16string(u"/a")}, "second", "one"));
  EXPECT_NE(kFirst, NotificationMessage({std::u16string(u"/a")}, "first", "two"));
}

TEST(Notification, IsEmptyAtFirst) {
  const Notification notification;

  EXPECT_TRUE(notification.IsEmpty());
  EXPECT_THAT(notification.GetMessages(), IsEmpty());
}

TEST(Notification, AppendsMessagesAtTheEndRepeatsIncluded) {
  Notification notification;

  notification.Add(kSecond);
  notification.Add(kFirst);
  notification.Add(kSecond);

  EXPECT_FALSE(notification.IsEmpty());
  EXPECT_THAT(notification.GetMessages(), ElementsAre(kSecond, kFirst, kSecond));
}

TEST(Notification, CopiesEachMessageDeeply) {
  Notification original;
  original.Add(kFirst);

  const Notification copy(original);
  original.Add(kSecond);

  EXPECT_THAT(copy.GetMessages(), ElementsAre(kFirst));
  const auto& copied = std::get<std::u16string>(copy.GetMessages().front().GetArguments().front());
  const auto& own = std::get<std::u16string>(original.GetMessages().front().GetArguments().front());
  EXPECT_NE(&copied, &own);
  EXPECT_NE(copied.data(), own.data());
}

TEST(Notification, KeepsACopyWhenTheOriginalGoes) {
  Notification copy;
  copy.Add(kSecond);
  {
    Notification original;
    original.Add(kFirst);
    copy = original;
  }

  EXPECT_THAT(copy.GetMessages(), ElementsAre(kFirst));
}

TEST(Notification, IsEqualWhenItHoldsEqualMessagesInTheSameOrder) {
  Notification one;
  one.Add(kFirst);
  one.Add(kSecond);
  Notification other;
  other.Add(kSecond);
  other.Add(kFirst);

  EXPECT_EQ(one, Notification(one));
  EXPECT_NE(one, other);
  EXPECT_NE(one, Notification());
}

}  // namespace
}  // namespace foundation::core::except
