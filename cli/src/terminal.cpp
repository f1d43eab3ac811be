#include "terminal.hpp"

#include <sys/ioctl.h>
#include <unistd.h>

#include <charconv>
#include <string>

#include "environment_variable.hpp"

namespace vornixpath {

namespace {

constexpr std::size_t kUsualWidth = 80;

std::size_t WidthOfTerminal() {
  const std::string text = Variable("COLUMNS").value_or("");
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
  return Layout{WidthOfTerminal(), !Variable("NO_COLOR") && Variable("TERM") != "dumb"};
}

}  // namespace vornixpath
