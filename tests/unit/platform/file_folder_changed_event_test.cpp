#include <gmock/gmock.h>

#include <memory>
#include <storage/filefolderobserver/file_folder_changed_event.hpp>
#include <type_traits>

namespace storage::filefolderobserver {
namespace {

using foundation::msg_svc::eventmgr::Event;

TEST(FileFolderChangedEvent, TellsWhatHasChanged) {
  const FileFolderChangedEvent event(u"file:///a/b.vnx", FrozenInclusion::None);

  EXPECT_EQ(event.getPath(), u"file:///a/b.vnx");
  EXPECT_EQ(event.getFrozenInclusion(), FrozenInclusion::None);
}

TEST(FileFolderChangedEvent, TakesANameThatIsNotUnicode) {
  const std::u16string stray{u'a', char16_t{0xDC80}};
  EXPECT_EQ(FileFolderChangedEvent(stray, FrozenInclusion::None).getPath(), stray);
}

TEST(FileFolderChangedEvent, IncludesNothingFrozenWithTheValueZero) {
  EXPECT_EQ(static_cast<std::uint32_t>(FrozenInclusion::None), 0U);
}

TEST(FileFolderChangedEvent, ClonesToItsOwnTypeThroughTheBase) {
  auto original = std::make_unique<FileFolderChangedEvent>(u"file:///a", static_cast<FrozenInclusion>(7));
  const std::unique_ptr<const Event> copy(static_cast<const Event&>(*original).clone());
  original.reset();

  const auto& event = dynamic_cast<const FileFolderChangedEvent&>(*copy);
  EXPECT_EQ(event.getPath(), u"file:///a");
  EXPECT_EQ(static_cast<int>(event.getFrozenInclusion()), 7);
}

}  // namespace
}  // namespace storage::filefolderobserver
