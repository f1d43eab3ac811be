#include <fakes/recording_log.hpp>
#include <mutex>

namespace foundation::storage::fakes {

class RecordingLog::Records {
 public:
  void Add(const log::LogRecord& record) {
    const std::lock_guard lock(mutex_);
    records_.push_back(record);
  }

  [[nodiscard]] std::vector<log::LogRecord> Get() const {
    const std::lock_guard lock(mutex_);
    return records_;
  }

 private:
  mutable std::mutex mutex_;
  std::vector<log::LogRecord> records_;
};

// The sink shares the records: a call under way may outlive the connection.
RecordingLog::RecordingLog()
    : records_(std::make_shared<Records>()),
      connection_(log::ConnectSink([records = records_](const log::LogRecord& record) { records->Add(record); })) {}

RecordingLog::~RecordingLog() = default;

std::vector<log::LogRecord> RecordingLog::GetRecords() const { return records_->Get(); }

}  // namespace foundation::storage::fakes
