#include <gmock/gmock.h>

#include <fakes/recording_log.hpp>

namespace foundation::storage::fakes {
namespace {

TEST(RecordingLog, KeepsWhatIsLoggedWhileItLives) {
  const log::basic_diagnostic_logger<char> logger("tests::recorded");
  logger.Write(log::Level::Info, "before");
  const RecordingLog recording;

  logger.Write(log::Level::Info, "one");
  logger.Write(log::Level::Error, "two");

  EXPECT_THAT(recording.GetRecords(), testing::ElementsAre(testing::Field(&log::LogRecord::text, "one"),
                                                           testing::Field(&log::LogRecord::text, "two")));
}

}  // namespace
}  // namespace foundation::storage::fakes
