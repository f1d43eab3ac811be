#include "terminal.hpp"

#include <sys/ioctl.h>
#include <unistd.h>

#include <charconv>
#include <cstdlib>
#include <string_view>

namespace vornixpath {

namespace {

constexpr std::size_t kUsualWidth = 80;

// Empty for one that is missing.
std::string_view Variable(const char* name) {
  const char* const value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe): nobody sets variables
  return value == nullptr ? std::string_view() : value;
}

std::size_t WidthOfTerminal() {
  const std::string_view text = Variable("COLUMNS");
  std::size_t columns = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), columns);
  if (error == std::errc() && end == text.data() + text.size() && columns > 0) return columns;

  winsize size{};
  const bool isKnown = ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
  return isKnown ? size.ws_col : kUsualWidth;
}

}  // namespace

std::optional<Layout> LayoutOfTerminal() {
  if (::isatty(STDOUT_FILENO) == 0) return std::nullopt;
  return Layout{WidthOfTerminal(), Variable("NO_COLOR").empty() && Variable("TERM") != "dumb"};
}

}  // namespace vornixpath
