// What exists once per process is one thing for every library in it.
#include <gmock/gmock.h>

#include <fakes/recording_log.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <foundation/storage/vfs/memory_storage_provider.hpp>

#include "second_user.hpp"

namespace foundation {
namespace {

namespace eventmgr = msg_svc::eventmgr;
using storage::vfs::MountHandle;
using storage::vfs::VornixStorageSystem;

class PlainEvent final : public eventmgr::Event {
 public:
  [[nodiscard]] Event* clone() const override { return new PlainEvent(*this); }
};

TEST(OneInstance, ShowsAMountToTheOtherLibrary) {
  const auto provider = std::make_shared<storage::vfs::MemoryStorageProvider>();
  const MountHandle mount = VornixStorageSystem::Mount(u"onlyhere", provider);

  EXPECT_EQ(second_user::FindProvider(u"onlyhere"), provider);
  EXPECT_EQ(second_user::FindProvider(u"file"), VornixStorageSystem::GetStorageSystemReference().FindProvider(u"file"));
}

TEST(OneInstance, ResolvesAnAliasInTheOtherLibrary) {
  const MountHandle alias = VornixStorageSystem::MountAlias(u"elsewhere", u"file");

  EXPECT_EQ(second_user::ResolvedTextOf(u"elsewhere:///a"), u"file:///a");
}

TEST(OneInstance, DeliversWhatTheOtherLibraryPostsToTheSession) {
  int heard = 0;
  const auto session = eventmgr::createLocalEventMgr(eventmgr::SessionEmId);
  const eventmgr::EventConnection connection = session->connect([&heard](const auto& event) {
    if (dynamic_cast<const PlainEvent*>(event.get()) != nullptr) ++heard;
  });

  second_user::PostToSession(new PlainEvent());
  session->dispatch();

  EXPECT_EQ(heard, 1);
}

TEST(OneInstance, ShowsALoggerToTheOtherLibrary) {
  const log::basic_diagnostic_logger<char16_t> logger("tests::oneinstance");

  EXPECT_EQ(second_user::FindLogger("tests::oneinstance"), static_cast<const log::diagnostic_logger*>(&logger));
}

TEST(OneInstance, HearsWhatTheOtherLibraryLogs) {
  const storage::fakes::RecordingLog log;

  second_user::Log("from afar");

  EXPECT_THAT(log.GetRecords(), testing::ElementsAre(testing::Field(&log::LogRecord::text, "from afar")));
}

TEST(OneInstance, CatchesByTypeWhatTheOtherLibraryThrows) {
  EXPECT_THROW(second_user::ParseIdentifier(u"no identifier"), storage::vfs::Exception);
  EXPECT_THROW(second_user::ParseIdentifier(u"no identifier"),
               core::except::Exception<core::except::IInternalException>);
}

}  // namespace
}  // namespace foundation
