#include <unicode/uchar.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <fl/filesystem/case_folding.hpp>
#include <limits>
#include <new>
#include <stdexcept>

namespace fl::filesystem {

namespace {

bool is_ascii(std::u16string_view text) {
  return std::all_of(text.begin(), text.end(), [](char16_t unit) { return unit < 0x80; });
}

std::u16string fold_ascii(std::u16string_view text) {
  std::u16string folded(text);
  for (char16_t& unit : folded) {
    if (unit >= u'A' && unit <= u'Z') unit = static_cast<char16_t>(unit + (u'a' - u'A'));
  }
  return folded;
}

void require_success(UErrorCode status) {
  if (status == U_MEMORY_ALLOCATION_ERROR) throw std::bad_alloc();
  if (U_FAILURE(status)) throw std::runtime_error(std::string("cannot fold letter case: ") + u_errorName(status));
}

}  // namespace

std::u16string fold_case(std::u16string_view text) {
  if (is_ascii(text)) return fold_ascii(text);
  if (text.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()) / 4) {
    throw std::length_error("the name is too long to fold its letter case");
  }

  // One code unit folds to at most three.
  std::u16string folded(text.size() * 3, u'\0');
  UErrorCode status = U_ZERO_ERROR;
  const std::int32_t length = u_strFoldCase(folded.data(), static_cast<std::int32_t>(folded.size()), text.data(),
                                            static_cast<std::int32_t>(text.size()), U_FOLD_CASE_DEFAULT, &status);
  require_success(status);
  folded.resize(static_cast<std::size_t>(length));
  return folded;
}

}  // namespace fl::filesystem
