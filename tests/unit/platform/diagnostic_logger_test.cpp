#include <gmock/gmock.h>

#include <fakes/recording_log.hpp>
#include <foundation/log/diagnostic_logger.hpp>
#include <stdexcept>
#include <support/run_together.hpp>
#include <vector>

namespace foundation::log {
namespace {

using storage::fakes::RecordingLog;

TEST(DiagnosticLogger, IsFoundByItsNameAsLongAsItLives) {
  EXPECT_EQ(FindDiagnosticLogger("tests::lives"), nullptr);
  {
    const basic_diagnostic_logger<char16_t> logger("tests::lives");
    EXPECT_EQ(FindDiagnosticLogger("tests::lives"), &logger);
    EXPECT_EQ(logger.GetName(), "tests::lives");
  }
  EXPECT_EQ(FindDiagnosticLogger("tests::lives"), nullptr);
}

TEST(DiagnosticLogger, IsFoundWhateverItsCharactersAre) {
  const basic_diagnostic_logger<char> logger("tests::narrow");
  EXPECT_EQ(FindDiagnosticLogger("tests::narrow"), &logger);
}

TEST(DiagnosticLogger, GivesWayToAnOlderOneOfItsName) {
  auto first = std::make_unique<basic_diagnostic_logger<char>>("tests::twins");
  const basic_diagnostic_logger<char> second("tests::twins");

  EXPECT_EQ(FindDiagnosticLogger("tests::twins"), first.get());
  first.reset();
  EXPECT_EQ(FindDiagnosticLogger("tests::twins"), &second);
}

TEST(DiagnosticLogger, HandsItsRecordsToEverySink) {
  const RecordingLog one;
  const RecordingLog other;
  const basic_diagnostic_logger<char16_t> logger("tests::records");

  logger.Write(Level::Warning, u"gr\u00FC\u00DFe");

  ASSERT_EQ(one.GetRecords().size(), 1U);
  EXPECT_EQ(other.GetRecords().size(), 1U);
  const LogRecord record = one.GetRecords().front();
  EXPECT_EQ(record.level, Level::Warning);
  EXPECT_EQ(record.logger, "tests::records");
  EXPECT_EQ(record.text,
            "gr\xC3\xBC\xC3\x9F"
            "e");
  EXPECT_NE(record.time, std::chrono::system_clock::time_point());
}

TEST(DiagnosticLogger, LetsRecordsOfEveryLevelThrough) {
  const RecordingLog log;
  const basic_diagnostic_logger<char> logger("tests::levels");
  const std::vector<Level> levels = {Level::Trace, Level::Debug, Level::Info, Level::Warning, Level::Error};

  for (const Level level : levels) logger.Write(level, "x");

  std::vector<Level> recorded;
  for (const LogRecord& record : log.GetRecords()) recorded.push_back(record.level);
  EXPECT_EQ(recorded, levels);
}

TEST(DiagnosticLogger, EscapesWhatIsDangerousToATerminal) {
  const RecordingLog log;

  basic_diagnostic_logger<char>("tests::bytes").Write(Level::Info, "a\x1B[31m\n\xFF");
  basic_diagnostic_logger<char16_t>("tests::units").Write(Level::Info, u"\u202E\xD800");

  ASSERT_EQ(log.GetRecords().size(), 2U);
  EXPECT_EQ(log.GetRecords()[0].text, "a\\u{1B}[31m\\u{A}\\xFF");
  EXPECT_EQ(log.GetRecords()[1].text, "\\u{202E}\\u{D800}");
}

TEST(DiagnosticLogger, TakesBracesForText) {
  const RecordingLog log;

  basic_diagnostic_logger<char>("tests::braces").Write(Level::Info, "{} {0} {");

  ASSERT_EQ(log.GetRecords().size(), 1U);
  EXPECT_EQ(log.GetRecords().front().text, "{} {0} {");
}

TEST(DiagnosticLogger, IsSilentWithoutASink) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();

  basic_diagnostic_logger<char>("tests::silent").Write(Level::Error, "nobody listens");

  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(DiagnosticLogger, WritesNothingToASinkWhoseConnectionIsGone) {
  int count = 0;
  const basic_diagnostic_logger<char> logger("tests::gone");
  {
    const SinkConnection connection = ConnectSink([&count](const LogRecord&) { ++count; });
    logger.Write(Level::Info, "heard");
  }
  logger.Write(Level::Info, "unheard");

  EXPECT_EQ(count, 1);
}

TEST(DiagnosticLogger, LetsASinkLog) {
  const basic_diagnostic_logger<char> logger("tests::inner");
  std::vector<std::string> texts;
  const SinkConnection connection = ConnectSink([&](const LogRecord& record) {
    texts.push_back(record.text);
    if (record.text == "outer") logger.Write(Level::Info, "inner");
  });

  logger.Write(Level::Info, "outer");

  EXPECT_THAT(texts, testing::ElementsAre("outer", "inner"));
}

TEST(DiagnosticLogger, PassesOnWhatASinkThrowsAndPrintsNothing) {
  const basic_diagnostic_logger<char> logger("tests::throwing");
  const SinkConnection connection = ConnectSink([](const LogRecord&) { throw std::runtime_error("the sink is full"); });
  testing::internal::CaptureStderr();

  EXPECT_THAT([&] { logger.Write(Level::Info, "x"); }, testing::ThrowsMessage<std::runtime_error>("the sink is full"));

  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(DiagnosticLogger, MayBeMadeAndUsedByManyThreads) {
  const RecordingLog log;

  Quorvex::PathManagement::support::RunTogether(8, [](std::size_t) {
    for (int round = 0; round < 100; ++round) {
      const basic_diagnostic_logger<char> logger("tests::threads");
      logger.Write(Level::Info, "x");
    }
  });

  EXPECT_EQ(log.GetRecords().size(), 800U);
  EXPECT_EQ(FindDiagnosticLogger("tests::threads"), nullptr);
}

}  // namespace
}  // namespace foundation::log
