#pragma once

#include <fakes/export.hpp>
#include <foundation/core/scoped_release.hpp>
#include <foundation/log/diagnostic_logger.hpp>
#include <memory>
#include <vector>

namespace foundation::storage::fakes {

/// Collects what is logged anywhere in the process while it lives. Safe from any thread.
class FAKES_EXPORT RecordingLog {
 public:
  RecordingLog();
  RecordingLog(const RecordingLog&) = delete;
  RecordingLog& operator=(const RecordingLog&) = delete;
  ~RecordingLog();

  /// So far, in the order of writing.
  [[nodiscard]] std::vector<log::LogRecord> GetRecords() const;

 private:
  class Records;
  std::shared_ptr<Records> records_;
  log::SinkConnection connection_;
};

}  // namespace foundation::storage::fakes
