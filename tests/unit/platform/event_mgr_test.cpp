#include <gmock/gmock.h>

#include <atomic>
#include <boost/smart_ptr/make_shared.hpp>
#include <foundation/msg_svc/eventmgr/event_mgr.hpp>
#include <stdexcept>
#include <support/run_together.hpp>
#include <vector>

namespace foundation::msg_svc::eventmgr {
namespace {

using testing::ElementsAre;

class NumberEvent final : public Event {
 public:
  explicit NumberEvent(int number) : number_(number) {}
  [[nodiscard]] Event* clone() const override { return new NumberEvent(*this); }
  [[nodiscard]] int GetNumber() const { return number_; }

 private:
  int number_;
};

int NumberOf(const boost::shared_ptr<const Event>& event) {
  return dynamic_cast<const NumberEvent&>(*event).GetNumber();
}

class EventMgrTest : public testing::Test {
 protected:
  void Post(int number) { manager_.post(boost::make_shared<NumberEvent>(number), 0); }

  EventMgr::Slot Collect() {
    return [this](const boost::shared_ptr<const Event>& event) { received_.push_back(NumberOf(event)); };
  }

  EventMgr manager_;
  std::vector<int> received_;
};

TEST_F(EventMgrTest, DeliversNothingBeforeItDispatches) {
  const EventConnection connection = manager_.connect(Collect());

  Post(1);

  EXPECT_TRUE(received_.empty());
}

TEST_F(EventMgrTest, DeliversInPostingOrderAndCounts) {
  const EventConnection connection = manager_.connect(Collect());
  for (const int number : {1, 2, 3}) Post(number);

  EXPECT_EQ(manager_.dispatch(), 3U);
  EXPECT_EQ(manager_.dispatch(), 0U);

  EXPECT_THAT(received_, ElementsAre(1, 2, 3));
}

TEST_F(EventMgrTest, DeliversToEverySlotInTheOrderOfConnecting) {
  std::vector<std::string> calls;
  const auto first = manager_.connect([&](const auto&) { calls.push_back("first"); });
  const auto second = manager_.connect([&](const auto&) { calls.push_back("second"); });

  Post(1);
  manager_.dispatch();

  EXPECT_THAT(calls, ElementsAre("first", "second"));
}

TEST_F(EventMgrTest, DeliversTheVeryEventThatWasPosted) {
  const auto posted = boost::make_shared<NumberEvent>(1);
  const Event* delivered = nullptr;
  const auto connection =
      manager_.connect([&](const boost::shared_ptr<const Event>& event) { delivered = event.get(); });

  manager_.post(posted, 0);
  manager_.dispatch();

  EXPECT_EQ(delivered, posted.get());
}

TEST_F(EventMgrTest, CountsEventsThatNobodyHears) {
  Post(1);
  EXPECT_EQ(manager_.dispatch(), 1U);
}

TEST_F(EventMgrTest, DeliversNothingToASlotWhoseConnectionIsGone) {
  { const EventConnection connection = manager_.connect(Collect()); }

  Post(1);
  manager_.dispatch();

  EXPECT_TRUE(received_.empty());
}

TEST_F(EventMgrTest, LetsAConnectionOutliveIt) {
  auto manager = std::make_unique<EventMgr>();
  EventConnection connection = manager->connect(Collect());

  manager.reset();

  EXPECT_NO_THROW(connection.Release());
}

TEST_F(EventMgrTest, LeavesWhatSlotsPostForTheNextDispatch) {
  const auto connection = manager_.connect([this](const boost::shared_ptr<const Event>& event) {
    received_.push_back(NumberOf(event));
    if (received_.size() < 3) Post(NumberOf(event) + 10);
  });
  Post(1);

  EXPECT_EQ(manager_.dispatch(), 1U);
  EXPECT_THAT(received_, ElementsAre(1));
  EXPECT_EQ(manager_.dispatch(), 1U);
  EXPECT_THAT(received_, ElementsAre(1, 11));
}

TEST_F(EventMgrTest, DeliversEachEventOnceWhenASlotDispatches) {
  const auto connection = manager_.connect([this](const boost::shared_ptr<const Event>& event) {
    received_.push_back(NumberOf(event));
    if (NumberOf(event) == 1) {
      Post(3);
      manager_.dispatch();
      Post(4);
    }
  });
  Post(1);
  Post(2);

  manager_.dispatch();

  EXPECT_THAT(received_, ElementsAre(1, 2, 3));
  EXPECT_EQ(manager_.dispatch(), 1U);
}

TEST_F(EventMgrTest, PassesASlotsExceptionOnAndKeepsTheRestQueued) {
  const auto connection = manager_.connect([this](const boost::shared_ptr<const Event>& event) {
    if (NumberOf(event) == 2) throw std::runtime_error("cannot take two");
    received_.push_back(NumberOf(event));
  });
  for (const int number : {1, 2, 3}) Post(number);

  EXPECT_THAT([this] { manager_.dispatch(); }, testing::ThrowsMessage<std::runtime_error>("cannot take two"));
  EXPECT_EQ(manager_.dispatch(), 1U);

  EXPECT_THAT(received_, ElementsAre(1, 3));
}

TEST_F(EventMgrTest, RefusesANullEvent) { EXPECT_THROW(manager_.post(nullptr, 0), std::invalid_argument); }

TEST_F(EventMgrTest, LetsASlotDisconnectItself) {
  EventConnection connection;
  connection = manager_.connect([&](const boost::shared_ptr<const Event>& event) {
    received_.push_back(NumberOf(event));
    connection.Release();
  });
  Post(1);
  Post(2);

  manager_.dispatch();

  EXPECT_THAT(received_, ElementsAre(1));
}

TEST_F(EventMgrTest, KeepsASlotThatDisconnectsItselfUntilItsCallEnds) {
  EventConnection connection;
  connection = manager_.connect([this, &connection, kept = std::make_shared<int>(5)](const auto&) {
    connection.Release();
    received_.push_back(*kept);
  });
  Post(1);

  manager_.dispatch();

  EXPECT_THAT(received_, ElementsAre(5));
}

TEST_F(EventMgrTest, LetsASlotDisconnectOneThatIsStillToHearTheEvent) {
  EventConnection second;
  const auto first = manager_.connect([&second](const auto&) { second.Release(); });
  second = manager_.connect(Collect());
  const auto third = manager_.connect(Collect());
  Post(1);

  manager_.dispatch();

  EXPECT_THAT(received_, ElementsAre(1)) << "by the third alone";
}

TEST_F(EventMgrTest, LetsASlotConnectAnotherWhichHearsLaterEventsOnly) {
  EventConnection late;
  const auto early = manager_.connect([&](const boost::shared_ptr<const Event>& event) {
    if (NumberOf(event) == 1) late = manager_.connect(Collect());
  });
  Post(1);
  Post(2);

  manager_.dispatch();
  Post(3);
  manager_.dispatch();

  EXPECT_THAT(received_, ElementsAre(2, 3));
}

TEST_F(EventMgrTest, LetsASlotPutAnotherInItsOwnPlace) {
  EventConnection connection;
  connection = manager_.connect([&](const auto&) { connection = manager_.connect(Collect()); });
  Post(1);
  Post(2);

  manager_.dispatch();

  EXPECT_THAT(received_, ElementsAre(2));
}

TEST_F(EventMgrTest, LetsThreadsConnectAndDisconnectWhileItDispatches) {
  std::atomic<std::size_t> heard = 0;
  const auto connection = manager_.connect([&heard](const auto&) { ++heard; });

  Quorvex::PathManagement::support::RunTogether(4, [&](std::size_t thread) {
    for (int round = 0; round < 200; ++round) {
      const EventConnection passing = manager_.connect([](const auto&) {});
      if (thread % 2 == 0) Post(round);
      manager_.dispatch();
    }
  });
  manager_.dispatch();

  EXPECT_EQ(heard, 400U);
}

TEST_F(EventMgrTest, TakesPostsFromManyThreadsWhileItDispatches) {
  std::atomic<std::size_t> heard = 0;
  std::atomic<std::size_t> delivered = 0;
  const auto connection = manager_.connect([&heard](const auto&) { ++heard; });

  Quorvex::PathManagement::support::RunTogether(4, [&](std::size_t) {
    for (int round = 0; round < 200; ++round) {
      Post(round);
      delivered += manager_.dispatch();
    }
  });
  delivered += manager_.dispatch();

  EXPECT_EQ(heard, 800U);
  EXPECT_EQ(delivered, 800U);
}

TEST(Event, ClonesToItsOwnType) {
  const NumberEvent event(7);
  const boost::shared_ptr<const Event> copy(event.clone());

  EXPECT_EQ(NumberOf(copy), 7);
}

TEST(SessionEventMgr, IsOneForEveryCaller) {
  EXPECT_EQ(createLocalEventMgr(SessionEmId), createLocalEventMgr(SessionEmId));
}

TEST(SessionEventMgr, IsTheOnlyOneWithAnId) {
  const auto unknown = static_cast<EmId>(1);  // NOLINT(clang-analyzer-optin.core.EnumCastOutOfRange): just that
  EXPECT_THROW(static_cast<void>(createLocalEventMgr(unknown)), std::invalid_argument);
}

}  // namespace
}  // namespace foundation::msg_svc::eventmgr
