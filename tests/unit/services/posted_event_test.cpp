// A session whose events are kept as they were posted, so that a test sees what the manager is handed and not only
// what it delivers.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <foundation/msg_svc/eventmgr/event_mgr.hpp>
#include <search_path_utilities/services.hpp>
#include <storage/filefolderobserver/file_folder_changed_event.hpp>
#include <utility>
#include <vector>

namespace {

struct Posted {
  boost::shared_ptr<foundation::msg_svc::eventmgr::Event> event;
  int options;
};

std::vector<const foundation::msg_svc::eventmgr::Event*> clones;
std::vector<Posted> posted;

}  // namespace

// Both stand before the platform's own, because a program comes before the libraries that it links.
namespace storage::filefolderobserver {

FileFolderChangedEvent* FileFolderChangedEvent::clone() const {
  auto* const copy = new FileFolderChangedEvent(*this);
  clones.push_back(copy);
  return copy;
}

}  // namespace storage::filefolderobserver

namespace foundation::msg_svc::eventmgr {

void EventMgr::post(boost::shared_ptr<Event> event, int options) { posted.push_back({std::move(event), options}); }

}  // namespace foundation::msg_svc::eventmgr

namespace Quorvex::PathManagement {
namespace {

using foundation::msg_svc::eventmgr::createLocalEventMgr;
using foundation::msg_svc::eventmgr::SessionEmId;
using foundation::storage::vfs::AbsoluteIRI;
using testing::SizeIs;

TEST(PostedChangeNotification, IsTheEventsOwnCopyWithoutOptionsAndHeldByTheManagerAlone) {
  const long owners = createLocalEventMgr(SessionEmId).use_count();

  NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChangesCommon(AbsoluteIRI(u"file:///tb/@cls/f.vnx"));

  EXPECT_EQ(createLocalEventMgr(SessionEmId).use_count(), owners) << "the manager is released";
  ASSERT_THAT(clones, SizeIs(3));
  ASSERT_THAT(posted, SizeIs(3));
  for (std::size_t number = 0; number < posted.size(); ++number) {
    EXPECT_EQ(posted[number].event.get(), clones[number]);
    EXPECT_EQ(posted[number].event.use_count(), 1);
    EXPECT_EQ(posted[number].options, 0);
  }
}

}  // namespace
}  // namespace Quorvex::PathManagement
