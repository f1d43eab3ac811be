// Loggers that stand on spdlog, the only file that sees it. One sink leads all records into a signal, which is what
// others connect to.
#include <spdlog/logger.h>
#include <spdlog/sinks/base_sink.h>

#include <algorithm>
#include <boost/signals2/signal.hpp>
#include <fl/filesystem/displayed_text.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/log/diagnostic_logger.hpp>
#include <mutex>
#include <type_traits>
#include <utility>
#include <vector>

namespace foundation::log {

namespace {

using RecordSignal = boost::signals2::signal<void(const LogRecord&)>;

constexpr std::pair<Level, spdlog::level::level_enum> kLevels[] = {{Level::Trace, spdlog::level::trace},
                                                                   {Level::Debug, spdlog::level::debug},
                                                                   {Level::Info, spdlog::level::info},
                                                                   {Level::Warning, spdlog::level::warn},
                                                                   {Level::Error, spdlog::level::err}};

spdlog::level::level_enum ToSpdlog(Level level) {
  const auto* found =
      std::find_if(std::begin(kLevels), std::end(kLevels), [&](auto pair) { return pair.first == level; });
  return found == std::end(kLevels) ? spdlog::level::err : found->second;
}

Level FromSpdlog(spdlog::level::level_enum level) {
  const auto* found =
      std::find_if(std::begin(kLevels), std::end(kLevels), [&](auto pair) { return pair.second == level; });
  return found == std::end(kLevels) ? Level::Error : found->first;
}

/// Hands records on as they come. Holds no lock meanwhile, so that a sink may log.
class SignalSink final : public spdlog::sinks::base_sink<spdlog::details::null_mutex> {
 public:
  explicit SignalSink(RecordSignal& signal) : signal_(signal) {}

 protected:
  void sink_it_(const spdlog::details::log_msg& message) override {
    LogRecord record;
    record.level = FromSpdlog(message.level);
    record.logger.assign(message.logger_name.data(), message.logger_name.size());
    record.text.assign(message.payload.data(), message.payload.size());
    record.time = message.time;
    signal_(record);
  }

  void flush_() override { /* nothing is kept back */
  }

 private:
  RecordSignal& signal_;
};

/// What the process knows of loggers and sinks.
class Registry {
 public:
  void Add(diagnostic_logger* logger) {
    const std::lock_guard lock(mutex_);
    loggers_.push_back(logger);
  }

  void Remove(const diagnostic_logger* logger) {
    const std::lock_guard lock(mutex_);
    std::erase(loggers_, logger);
  }

  [[nodiscard]] diagnostic_logger* Find(std::string_view name) const {
    const std::lock_guard lock(mutex_);
    const auto found = std::find_if(loggers_.begin(), loggers_.end(),
                                    [name](const diagnostic_logger* logger) { return logger->GetName() == name; });
    return found == loggers_.end() ? nullptr : *found;
  }

  [[nodiscard]] RecordSignal& GetSignal() noexcept { return signal_; }
  [[nodiscard]] const spdlog::sink_ptr& GetSink() const noexcept { return sink_; }

 private:
  mutable std::mutex mutex_;
  std::vector<diagnostic_logger*> loggers_;  // the oldest first
  RecordSignal signal_;
  spdlog::sink_ptr sink_ = std::make_shared<SignalSink>(signal_);
};

/// Never destroyed: libraries unload in any order, and their loggers with them.
Registry& TheRegistry() {
  static Registry& registry = *new Registry;
  return registry;
}

}  // namespace

class diagnostic_logger::Channel {
 public:
  explicit Channel(const std::string& name) : logger_(name, TheRegistry().GetSink()) {
    logger_.set_level(spdlog::level::trace);
    // spdlog would print what a sink throws.
    logger_.set_error_handler([](const std::string&) { throw; });
  }

  [[nodiscard]] const std::string& GetName() const noexcept { return logger_.name(); }

  void Write(Level level, std::u16string_view text) {
    const std::string shown = fl::filesystem::to_displayed_text(text);
    logger_.log(ToSpdlog(level), spdlog::string_view_t(shown));
  }

 private:
  spdlog::logger logger_;
};

diagnostic_logger::diagnostic_logger(const std::string& name) : channel_(std::make_unique<Channel>(name)) {
  TheRegistry().Add(this);
}

diagnostic_logger::~diagnostic_logger() { TheRegistry().Remove(this); }

const std::string& diagnostic_logger::GetName() const noexcept { return channel_->GetName(); }

void diagnostic_logger::Emit(Level level, std::u16string_view text) const {
  if (!TheRegistry().GetSignal().empty()) channel_->Write(level, text);
}

template <class CharT>
basic_diagnostic_logger<CharT>::basic_diagnostic_logger(const std::string& name) : diagnostic_logger(name) {}

template <class CharT>
basic_diagnostic_logger<CharT>::~basic_diagnostic_logger() = default;

template <class CharT>
void basic_diagnostic_logger<CharT>::Write(Level level, std::basic_string_view<CharT> text) const {
  if constexpr (std::is_same_v<CharT, char>) {
    Emit(level, fl::filesystem::from_bytes(text));
  } else {
    Emit(level, text);
  }
}

template class basic_diagnostic_logger<char>;
template class basic_diagnostic_logger<char16_t>;

diagnostic_logger* FindDiagnosticLogger(std::string_view name) { return TheRegistry().Find(name); }

SinkConnection ConnectSink(const std::function<void(const LogRecord&)>& sink) {
  return SinkConnection([connection = TheRegistry().GetSignal().connect(sink)] { connection.disconnect(); });
}

}  // namespace foundation::log
