#include <iomanip>
#include <search_path_environment/utc_time.hpp>
#include <sstream>

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
  std::ostringstream text;
  text << std::setfill('0') << std::setw(4) << static_cast<int>(date.year()) << '-' << std::setw(2)
       << static_cast<unsigned>(date.month()) << '-' << std::setw(2) << static_cast<unsigned>(date.day()) << 'T'
       << std::setw(2) << clock.hours().count() << ':' << std::setw(2) << clock.minutes().count() << ':' << std::setw(2)
       << clock.seconds().count() << 'Z';
  return text.str();
}

std::optional<sys_seconds> TimeFromText(const std::string& text) {
  std::istringstream stream(text);
  int year = 0;
  unsigned month = 0;
  unsigned day = 0;
  int hour = 0;
  int minute = 0;
  int second = 0;
  char separator = 0;
  stream >> year >> separator >> month >> separator >> day >> separator >> hour >> separator >> minute >> separator >>
      second >> separator;
  const year_month_day date{std::chrono::year(year), std::chrono::month(month), std::chrono::day(day)};
  if (!stream || !date.ok()) return std::nullopt;

  const sys_seconds time = std::chrono::sys_days(date) + std::chrono::hours(hour) + std::chrono::minutes(minute) +
                           std::chrono::seconds(second);
  if (ToText(time) != text) return std::nullopt;
  return time;
}

}  // namespace Quorvex::PathEnvironment
