// Identifiers to normal form, after RFC 3986 and RFC 3987, in an order that keeps names names: the path is split at
// '/' first, then each segment is decoded as bytes and escaped anew, and only then are dot segments taken out of the
// list. So an escaped '/' cannot become a separator, nor a name an authority. One pass; O(n).
#include "identifier_text.hpp"

#include <algorithm>
#include <array>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <optional>
#include <vector>

namespace foundation::storage::vfs::detail {

namespace {

constexpr std::size_t kEscapeLength = 3;

constexpr bool IsLetter(char16_t unit) noexcept {
  return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}
constexpr bool IsDigit(char16_t unit) noexcept { return unit >= u'0' && unit <= u'9'; }
constexpr bool IsControl(char16_t unit) noexcept { return unit < 0x20 || (unit >= 0x7F && unit <= 0x9F); }
constexpr bool IsSurrogate(char16_t unit) noexcept { return unit >= 0xD800 && unit <= 0xDFFF; }
constexpr bool IsHighSurrogate(char16_t unit) noexcept { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool IsLowSurrogate(char16_t unit) noexcept { return unit >= 0xDC00 && unit <= 0xDFFF; }
constexpr bool IsStrayByte(char16_t unit) noexcept { return unit >= 0xDC80 && unit <= 0xDCFF; }
constexpr char16_t ToLower(char16_t unit) noexcept {
  return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 0x20) : unit;
}

constexpr bool Contains(std::u16string_view set, char16_t unit) noexcept {
  return set.find(unit) != std::u16string_view::npos;
}

constexpr bool NeedsEscape(char16_t unit) noexcept { return IsControl(unit) || Contains(u"%?#/", unit); }

constexpr bool IsUnreserved(char16_t unit) noexcept {
  return IsLetter(unit) || IsDigit(unit) || Contains(u"-._~", unit);
}

/// Whether an authority may hold `unit` unescaped.
constexpr bool IsAuthorityCharacter(char16_t unit) noexcept {
  return unit >= 0x80 || IsUnreserved(unit) || Contains(u"!$&'()*+,;=:@[]", unit);
}

void LowerCase(std::u16string& text, std::size_t from) {
  std::transform(text.begin() + static_cast<std::ptrdiff_t>(from), text.end(),
                 text.begin() + static_cast<std::ptrdiff_t>(from), ToLower);
}

constexpr int HexValue(char16_t unit) noexcept {
  if (IsDigit(unit)) return unit - u'0';
  const char16_t lower = ToLower(unit);
  return lower >= u'a' && lower <= u'f' ? lower - u'a' + 10 : -1;
}

/// The byte that the escape at the beginning of `text` stands for; none when there is no well-formed one.
constexpr std::optional<unsigned char> FirstEscape(std::u16string_view text) noexcept {
  if (text.size() < kEscapeLength || text[0] != u'%') return std::nullopt;
  const int high = HexValue(text[1]);
  const int low = HexValue(text[2]);
  if (high < 0 || low < 0) return std::nullopt;
  return static_cast<unsigned char>(high * 16 + low);
}

void AppendEscapedByte(std::u16string& text, unsigned char byte) {
  constexpr std::u16string_view digits = u"0123456789ABCDEF";
  text.push_back(u'%');
  text.push_back(digits[byte >> 4]);
  text.push_back(digits[byte & 0xF]);
}

/// The bytes of a segment whose escapes are all well-formed. Throws encoding_error.
std::string SegmentBytes(std::u16string_view segment) {
  std::string bytes;
  while (!segment.empty()) {
    if (const auto byte = FirstEscape(segment)) {
      bytes.push_back(static_cast<char>(*byte));
      segment.remove_prefix(kEscapeLength);
      continue;
    }
    const std::size_t length = std::min(segment.find(u'%'), segment.size());
    bytes += fl::filesystem::to_bytes(segment.substr(0, length));
    segment.remove_prefix(length);
  }
  return bytes;
}

bool StandsForItself(std::u16string_view segment) noexcept {
  return std::none_of(segment.begin(), segment.end(),
                      [](char16_t unit) { return NeedsEscape(unit) || IsSurrogate(unit); });
}

std::u16string NormalizeSegment(std::u16string_view segment) {
  if (StandsForItself(segment)) return std::u16string(segment);

  std::u16string normal;
  AppendEscaped(normal, fl::filesystem::from_bytes(SegmentBytes(segment)));
  return normal;
}

/// The segments of a path on their way to normal form.
class SegmentList {
 public:
  enum class Kind { Rooted, Rootless };
  enum class EmptySegments { Dropped, Kept };

  SegmentList(Kind kind, EmptySegments empties) : isRootless_(kind == Kind::Rootless), empties_(empties) {}

  void AddAll(std::u16string_view path) {
    for (std::size_t end = path.find(u'/'); end != std::u16string_view::npos; end = path.find(u'/')) {
      Add(NormalizeSegment(path.substr(0, end)));
      path.remove_prefix(end + 1);
    }
    Add(NormalizeSegment(path));
    while (!segments_.empty() && segments_.back().empty()) segments_.pop_back();
  }

  void AppendTo(std::u16string& text) const {
    for (std::size_t index = 0; index < segments_.size(); ++index) {
      if (index > 0) text.push_back(u'/');
      text += segments_[index];
    }
  }

 private:
  void Add(std::u16string segment) {
    if (segment == u".") return;
    if (segment == u"..") return GoUp();
    if (segment.empty() && empties_ == EmptySegments::Dropped) return;
    segments_.push_back(std::move(segment));
  }

  void GoUp() {
    const bool isAtTop = segments_.empty() || segments_.back() == u"..";
    if (!isAtTop) {
      segments_.pop_back();
    } else if (isRootless_) {
      segments_.emplace_back(u"..");
    }
  }

  bool isRootless_;
  EmptySegments empties_;
  std::vector<std::u16string> segments_;
};

/// One text being parsed. Every refusal quotes the whole of it.
class Parser {
 public:
  explicit Parser(std::u16string_view text) noexcept : text_(text) {}

  [[nodiscard]] NormalForm Parse() const {
    RefuseForbiddenCharacters();
    NormalForm form;
    form.schemeLength = LengthOfScheme(text_);
    if (form.schemeLength == 0) Refuse("it does not begin with a scheme of two or more characters and ':'");

    form.text = NormalizeScheme(text_.substr(0, form.schemeLength)) + u':';
    const std::u16string_view rest = text_.substr(form.schemeLength + 1);
    form.isRootless = !rest.starts_with(u'/');
    if (form.isRootless) {
      AppendRootless(form, rest);
    } else {
      AppendRooted(form, rest);
    }
    return form;
  }

  [[noreturn]] void Refuse(std::string_view reason) const { throw Exception(text_, reason); }

 private:
  void RefuseForbiddenCharacters() const {
    for (std::size_t index = 0; index < text_.size(); ++index) {
      const char16_t unit = text_[index];
      if (unit == u'?') Refuse("it has a query");
      if (unit == u'#') Refuse("it has a fragment");
      if (IsControl(unit)) Refuse("it holds a control character that is not escaped");
      if (unit == u'%' && !FirstEscape(text_.substr(index))) Refuse("'%' is not followed by two hexadecimal digits");
    }
  }

  static void AppendRootless(NormalForm& form, std::u16string_view path) {
    SegmentList segments(SegmentList::Kind::Rootless, SegmentList::EmptySegments::Dropped);
    segments.AddAll(path);
    form.pathStart = form.text.size();
    segments.AppendTo(form.text);
  }

  void AppendRooted(NormalForm& form, std::u16string_view rest) const {
    const bool isFile = form.text == u"file:";
    const std::u16string_view authority = TakeAuthority(rest);
    form.text += u"//";
    form.text += NormalizeAuthority(authority, isFile);

    SegmentList segments(SegmentList::Kind::Rooted,
                         isFile ? SegmentList::EmptySegments::Dropped : SegmentList::EmptySegments::Kept);
    segments.AddAll(rest);
    form.pathStart = form.text.size();
    form.text.push_back(u'/');
    segments.AppendTo(form.text);
  }

  /// Leaves in `rest` the path behind the root's '/'.
  static std::u16string_view TakeAuthority(std::u16string_view& rest) {
    std::u16string_view authority;
    if (rest.starts_with(u"//")) {
      rest.remove_prefix(2);
      authority = rest.substr(0, rest.find(u'/'));
      rest.remove_prefix(authority.size());
    }
    if (!rest.empty()) rest.remove_prefix(1);
    return authority;
  }

  [[nodiscard]] std::u16string NormalizeAuthority(std::u16string_view authority, bool isFile) const {
    RefuseForbiddenAuthority(authority);
    std::u16string decoded = fl::filesystem::from_bytes(SegmentBytes(authority));
    const std::size_t user = decoded.rfind(u'@');
    LowerCase(decoded, user == std::u16string::npos ? 0 : user);
    if (isFile && decoded == u"localhost") return {};

    std::u16string normal;
    AppendEscaped(normal, decoded);
    return normal;
  }

  /// An escaped delimiter would change its meaning when decoded, so an authority may escape only what is no delimiter.
  void RefuseForbiddenAuthority(std::u16string_view authority) const {
    for (std::size_t index = 0; index < authority.size(); ++index) {
      const auto byte = FirstEscape(authority.substr(index));
      const bool isAllowed = byte ? *byte >= 0x80 || IsUnreserved(*byte) : IsAuthorityCharacter(authority[index]);
      if (!isAllowed) Refuse("its authority holds a character that none may hold");
      if (byte) index += kEscapeLength - 1;
    }
  }

  std::u16string_view text_;
};

// Of a segment that is its own normal form, whatever stands beside it, but for a dot at its beginning.
constexpr auto kPlain = [] {
  std::array<bool, 128> isPlain = {};
  for (std::size_t unit = 0; unit < isPlain.size(); ++unit) {
    const auto character = static_cast<char16_t>(unit);
    isPlain[unit] = IsLetter(character) || IsDigit(character) || Contains(u"._-+@", character);
  }
  return isPlain;
}();

// What most identifiers are: a file's, and in normal form already.
bool IsPlainFile(std::u16string_view text) noexcept {
  constexpr std::u16string_view root = u"file:///";
  if (!text.starts_with(root) || text.size() == root.size()) return false;
  char16_t previous = u'/';
  for (const char16_t unit : text.substr(root.size())) {
    const bool isAfterSeparator = previous == u'/';
    const bool isFine = unit == u'/' || unit == u'.' ? !isAfterSeparator : unit < kPlain.size() && kPlain[unit];
    if (!isFine) return false;
    previous = unit;
  }
  return previous != u'/';
}

}  // namespace

NormalForm Normalize(std::u16string_view text) {
  if (IsPlainFile(text)) return {std::u16string(text), LengthOfScheme(text), std::u16string_view(u"file://").size()};

  const Parser parser(text);
  try {
    return parser.Parse();
  } catch (const fl::filesystem::encoding_error&) {
    parser.Refuse("it holds half a character");
  }
}

bool IsScheme(std::u16string_view text) noexcept {
  const auto mayFollow = [](char16_t unit) { return IsLetter(unit) || IsDigit(unit) || Contains(u"+.-", unit); };
  return text.size() >= 2 && IsLetter(text[0]) && std::all_of(text.begin() + 1, text.end(), mayFollow);
}

std::u16string NormalizeScheme(std::u16string_view scheme) {
  if (!IsScheme(scheme)) throw Exception(scheme, "it is no scheme");
  std::u16string normal(scheme);
  LowerCase(normal, 0);
  return normal;
}

std::size_t LengthOfScheme(std::u16string_view text) noexcept {
  const std::size_t colon = text.find(u':');
  if (colon == std::u16string_view::npos || !IsScheme(text.substr(0, colon))) return 0;
  return colon;
}

std::vector<std::u16string> Split(std::u16string_view text, char16_t separator) {
  std::vector<std::u16string> names;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(separator), text.size());
    if (end > 0) names.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return names;
}

void AppendEscaped(std::u16string& text, std::u16string_view segment) {
  for (std::size_t index = 0; index < segment.size(); ++index) {
    const char16_t unit = segment[index];
    const bool isPair = IsHighSurrogate(unit) && index + 1 < segment.size() && IsLowSurrogate(segment[index + 1]);
    if (isPair) {
      text.append(segment.substr(index++, 2));
    } else if (IsStrayByte(unit)) {
      AppendEscapedByte(text, static_cast<unsigned char>(unit - 0xDC00));
    } else if (!NeedsEscape(unit)) {
      text.push_back(unit);
    } else {
      for (const char byte : fl::filesystem::to_bytes({&unit, 1}))
        AppendEscapedByte(text, static_cast<unsigned char>(byte));
    }
  }
}

std::u16string CanonicalSpelling(std::u16string_view name) {
  if (std::none_of(name.begin(), name.end(), IsSurrogate)) return std::u16string(name);
  return fl::filesystem::from_bytes(fl::filesystem::to_bytes(name));
}

std::u16string DecodeEscapes(std::u16string_view text) {
  if (text.find(u'%') == std::u16string_view::npos) return std::u16string(text);

  std::u16string decoded;
  while (!text.empty()) {
    std::string bytes;
    for (auto byte = FirstEscape(text); byte; byte = FirstEscape(text)) {
      bytes.push_back(static_cast<char>(*byte));
      text.remove_prefix(kEscapeLength);
    }
    decoded += fl::filesystem::from_bytes(bytes);
    // Whatever stands here begins no escape, even when it is a '%'.
    const std::size_t length = text.empty() ? 0 : std::min(text.find(u'%', 1), text.size());
    decoded += text.substr(0, length);
    text.remove_prefix(length);
  }
  return decoded;
}

}  // namespace foundation::storage::vfs::detail
