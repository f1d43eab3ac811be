// Not with streams: those write and read as the global locale has it.

#include <array>
#include <cstdio>
#include <search_path_environment/utc_time.hpp>

namespace Quorvex::PathEnvironment {

using std::chrono::days;
using std::chrono::floor;
using std::chrono::hh_mm_ss;
using std::chrono::sys_seconds;
using std::chrono::year_month_day;

std::string ToText(sys_seconds time) {
  const auto day = floor<days>(time);
  const year_month_day date(day);
  const hh_mm_ss clock(time - day);
  std::array<char, 64> text = {};
  static_cast<void>(std::snprintf(
      text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ", static_cast<int>(date.year()),
      static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()), static_cast<int>(clock.hours().count()),
      static_cast<int>(clock.minutes().count()), static_cast<int>(clock.seconds().count())));
  return text.data();
}

std::optional<sys_seconds> TimeFromText(const std::string& text) {
  int year = 0;
  unsigned month = 0;
  unsigned day = 0;
  int hour = 0;
  int minute = 0;
  int second = 0;
  // NOLINTNEXTLINE(cert-err34-c): what comes of it is written again and compared
  static_cast<void>(
      std::sscanf(text.c_str(), "%4d-%2u-%2uT%2d:%2d:%2dZ", &year, &month, &day, &hour, &minute, &second));
  const year_month_day date{std::chrono::year(year), std::chrono::month(month), std::chrono::day(day)};
  if (!date.ok()) return std::nullopt;

  const sys_seconds time = std::chrono::sys_days(date) + std::chrono::hours(hour) + std::chrono::minutes(minute) +
                           std::chrono::seconds(second);
  if (ToText(time) != text) return std::nullopt;
  return time;
}

}  // namespace Quorvex::PathEnvironment
