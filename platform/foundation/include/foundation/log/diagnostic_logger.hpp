// Named loggers for the people who maintain a system, and the sinks their records go to.
//
// Safe from any thread. Loggers and sinks are known to the whole process; a logger is known from its construction to
// its destruction. Nothing is written anywhere unless a sink is connected; no storage is touched.
#pragma once

#include <chrono>
#include <cstdint>
#include <foundation/core/scoped_release.hpp>
#include <foundation/export.hpp>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace foundation::log {

/// How grave a record is, in rising order.
enum class Level : std::uint8_t { Trace, Debug, Info, Warning, Error };

/// What a sink gets: a value, the sink's to keep.
struct LogRecord {
  Level level = Level::Info;                   ///< as its writer graded it
  std::string logger;                          ///< the name of the logger that wrote it
  std::string text;                            ///< UTF-8, unprintable characters escaped
  std::chrono::system_clock::time_point time;  ///< of writing
};

/// A logger of whatever character type.
class FOUNDATION_EXPORT diagnostic_logger {
 public:
  diagnostic_logger(const diagnostic_logger&) = delete;
  diagnostic_logger& operator=(const diagnostic_logger&) = delete;
  virtual ~diagnostic_logger();

  /// By which FindDiagnosticLogger finds it; several loggers may share one.
  [[nodiscard]] const std::string& GetName() const noexcept;

 protected:
  /// Makes it known to the process under `name`.
  explicit diagnostic_logger(const std::string& name);
  /// Hands `text` to every sink.
  void Emit(Level level, std::u16string_view text) const;

 private:
  class Channel;
  std::unique_ptr<Channel> channel_;
};

/// A logger whose messages are of `CharT`: char (bytes, UTF-8 by custom) or char16_t.
template <class CharT>
class FOUNDATION_EXPORT basic_diagnostic_logger final : public diagnostic_logger {
 public:
  /// Known to the process under `name` until it is destroyed.
  explicit basic_diagnostic_logger(const std::string& name);
  ~basic_diagnostic_logger() override;

  /// Any text will do. What a sink throws passes to the caller.
  void Write(Level level, std::basic_string_view<CharT> text) const;
};

extern template class basic_diagnostic_logger<char>;
extern template class basic_diagnostic_logger<char16_t>;

/// The oldest living logger of that name; null when there is none. Whoever asks must know that it lives on.
[[nodiscard]] FOUNDATION_EXPORT diagnostic_logger* FindDiagnosticLogger(std::string_view name);

/// Its end disconnects the sink.
using SinkConnection = core::ScopedRelease;

/// Calls `sink` with each record that is written from now on, on the writer's thread, until the connection goes. A
/// call that is under way on another thread at that moment ends on its own.
[[nodiscard]] FOUNDATION_EXPORT SinkConnection ConnectSink(const std::function<void(const LogRecord&)>& sink);

}  // namespace foundation::log
