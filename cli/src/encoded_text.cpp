#include "encoded_text.hpp"

#include <fl/filesystem/displayed_text.hpp>
#include <fl/filesystem/text_codec.hpp>

namespace vornixpath {

namespace {

std::string PercentEncoded(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string encoded;
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    encoded += '%';
    encoded += kDigits[value >> 4U];
    encoded += kDigits[value & 0xFU];
  }
  return encoded;
}

// Whether people are shown this character as it is.
bool IsHarmless(std::u16string_view character) {
  return character == u"\\" || fl::filesystem::to_displayed_text(character) == fl::filesystem::to_bytes(character);
}

bool IsHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }

template <class IsKept>
std::string Encoded(std::u16string_view text, const IsKept& isKept) {
  std::string encoded;
  for (std::size_t i = 0; i < text.size();) {
    const std::u16string_view character = text.substr(i, IsHighSurrogate(text[i]) ? 2 : 1);
    const std::string bytes = fl::filesystem::to_bytes(character);
    encoded += isKept(character) ? bytes : PercentEncoded(bytes);
    i += character.size();
  }
  return encoded;
}

std::optional<unsigned> DigitValue(char digit) {
  if (digit >= '0' && digit <= '9') return static_cast<unsigned>(digit - '0');
  if (digit >= 'A' && digit <= 'F') return static_cast<unsigned>(digit - 'A' + 10);
  if (digit >= 'a' && digit <= 'f') return static_cast<unsigned>(digit - 'a' + 10);
  return std::nullopt;
}

// The byte that "%41" at the beginning of `text` stands for.
std::optional<char> EscapedByte(std::string_view text) {
  if (text.size() < 3) return std::nullopt;
  const auto high = DigitValue(text[1]);
  const auto low = DigitValue(text[2]);
  if (!high || !low) return std::nullopt;
  return static_cast<char>(*high * 16 + *low);
}

}  // namespace

std::string WithoutDanger(std::u16string_view text) { return Encoded(text, IsHarmless); }

std::string EncodedText(std::u16string_view text) {
  return Encoded(text, [](std::u16string_view character) { return character != u"%" && IsHarmless(character); });
}

std::optional<std::u16string> DecodedText(std::string_view encoded) {
  std::string bytes;
  while (!encoded.empty()) {
    const bool isEscape = encoded.front() == '%';
    const auto byte = isEscape ? EscapedByte(encoded) : encoded.front();
    if (!byte) return std::nullopt;
    bytes += *byte;
    encoded.remove_prefix(isEscape ? 3 : 1);
  }
  return fl::filesystem::from_bytes(bytes);
}

}  // namespace vornixpath
