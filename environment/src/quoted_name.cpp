#include "quoted_name.hpp"

#include <cstddef>
#include <fl/filesystem/displayed_text.hpp>

namespace Quorvex::PathEnvironment {

namespace {

constexpr std::size_t kLongestShownWhole = 300;
constexpr std::size_t kShownOfAnEnd = 100;

bool IsLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }
bool IsHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }

bool StartsCharacter(std::u16string_view text, std::size_t position) {
  return position == 0 || !IsLowSurrogate(text[position]) || !IsHighSurrogate(text[position - 1]);
}

std::size_t CountCharacters(std::u16string_view text) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < text.size(); ++i) count += StartsCharacter(text, i) ? 1 : 0;
  return count;
}

std::u16string_view FirstCharacters(std::u16string_view text, std::size_t count) {
  std::size_t end = 0;
  for (; end < text.size(); ++end) {
    if (StartsCharacter(text, end) && count-- == 0) break;
  }
  return text.substr(0, end);
}

std::u16string_view LastCharacters(std::u16string_view text, std::size_t count) {
  std::size_t begin = text.size();
  while (begin > 0 && count > 0) count -= StartsCharacter(text, --begin) ? 1 : 0;
  return text.substr(begin);
}

std::string WithThousands(std::size_t number) {
  std::string digits = std::to_string(number);
  for (std::size_t place = digits.size(); place > 3;) digits.insert(place -= 3, 1, ',');
  return digits;
}

}  // namespace

std::string QuotedName(std::u16string_view name) {
  using fl::filesystem::to_displayed_text;
  const std::size_t length = CountCharacters(name);
  if (length <= kLongestShownWhole) return '"' + to_displayed_text(name) + '"';
  return '"' + to_displayed_text(FirstCharacters(name, kShownOfAnEnd)) + "..." +
         to_displayed_text(LastCharacters(name, kShownOfAnEnd)) + "\" (" + WithThousands(length) + " characters)";
}

}  // namespace Quorvex::PathEnvironment
