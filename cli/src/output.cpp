#include "output.hpp"

#include <fl/filesystem/displayed_text.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <iostream>
#include <stdexcept>

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

}  // namespace

void WriteResult(std::u16string_view text, OutputForm form) {
  const bool exactly = form == OutputForm::NulTerminated;
  WriteSafeResult(exactly ? fl::filesystem::to_bytes(text) : fl::filesystem::to_displayed_text(text), form);
}

void WriteSafeResult(std::string_view bytes, OutputForm form) {
  std::cout << bytes << (form == OutputForm::NulTerminated ? '\0' : '\n');
}

void WriteMessage(std::string_view message) { std::cerr << "vornixpath: " << message << '\n'; }

void WriteWarning(std::string_view message) { std::cerr << "vornixpath: warning: " << message << '\n'; }

std::string ExactText(const foundation::storage::vfs::AbsoluteIRI& iri) {
  const std::u16string_view text = iri.toString();
  std::string exact;
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t length = IsHighSurrogate(text[i]) ? 2 : 1;
    const std::u16string_view character = text.substr(i, length);
    const std::string bytes = fl::filesystem::to_bytes(character);
    exact += IsHarmless(character) ? bytes : PercentEncoded(bytes);
    i += length;
  }
  return exact;
}

std::string Quoted(std::u16string_view text) { return '"' + fl::filesystem::to_displayed_text(text) + '"'; }

void FinishOutput() {
  std::cout.flush();
  if (!std::cout) throw std::runtime_error("cannot write to standard output");
}

}  // namespace vornixpath
