#pragma once

// Random texts that like the characters with which parsers have trouble.

#include <string>
#include <string_view>
#include <support/random_source.hpp>

namespace foundation::support {

using Quorvex::PathManagement::support::RandomSource;

/// Up to `longest` bytes, every other one from the borders of UTF-8.
inline std::string RandomBytes(RandomSource& random, std::size_t longest) {
  using namespace std::string_view_literals;
  constexpr std::string_view border =
      "\0\x1F %/\\?#:a\x7F\x80\x8F\x90\x9F\xA0\xBF\xC0\xC1\xC2\xC3\xDF\xE0\xED\xEF\xF0\xF4\xF5\xFF"sv;
  std::string bytes(random.Below(longest + 1), '\0');
  for (char& byte : bytes) {
    byte = random.OneIn(2) ? border[random.Below(border.size())] : static_cast<char>(random.Below(256));
  }
  return bytes;
}

/// Up to `longest` pieces of which identifiers and paths are made, whole and broken.
inline std::u16string RandomIdentifierText(RandomSource& random, std::size_t longest) {
  static const std::vector<std::u16string> pieces = {
      u"file", u"FILE",      u"memory", u":",      u"/",      u"//",     u"///",    u".",      u"..",
      u"%2F",  u"%2e",       u"%2E%2e", u"%",      u"%zz",    u"%41",    u"%c3",    u"%A9",    u"é",
      u"%ff",  u"localhost", u"Host",   u"@",      u"\\",     u" ",      u"a",      u"B~-_",   u"%25",
      u"?",    u"#",         u"%00",    u"\u0001", u"\u0085", u"\xDC80", u"\xDCC3", u"\xD83D", u"\xD83D\xDE00"};
  std::u16string text;
  for (std::size_t count = random.Below(longest + 1); count > 0; --count) text += random.Pick(pieces);
  return text;
}

/// A name that a file can have: no '/' and no NUL, neither empty nor a dot segment; otherwise any bytes.
inline std::string RandomNameBytes(RandomSource& random) {
  std::string name = RandomBytes(random, 12) + "x";
  for (char& byte : name) {
    if (byte == '/' || byte == '\0') byte = '.';
  }
  return name;
}

}  // namespace foundation::support
