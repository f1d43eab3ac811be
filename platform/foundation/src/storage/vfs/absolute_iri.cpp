#define XXH_INLINE_ALL
#include <xxhash.h>

#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <string_view>
#include <utility>

#include "identifier_text.hpp"
#include "mount_table.hpp"

namespace foundation::storage::vfs {

namespace {

std::size_t HashOf(std::u16string_view text) noexcept {
  return static_cast<std::size_t>(XXH3_64bits(text.data(), text.size() * sizeof(char16_t)));
}

std::u16string_view PathOf(const detail::IdentifierRecord& record) noexcept {
  return std::u16string_view(record.text).substr(record.pathStart);
}

/// The path behind the root's '/'.
std::u16string_view RelativePathOf(const detail::IdentifierRecord& record) noexcept {
  return PathOf(record).substr(record.isRootless ? 0 : 1);
}

/// The last segment as it stands in the text.
std::u16string_view EscapedNameOf(const detail::IdentifierRecord& record) noexcept {
  const std::u16string_view path = RelativePathOf(record);
  const std::u16string_view name = path.substr(path.rfind(u'/') + 1);  // npos + 1 is 0
  return name == u".." ? std::u16string_view() : name;
}

void RequireName(const std::u16string& name) {
  if (name.empty()) throw Exception(name, "a name cannot be empty");
  if (name == u"." || name == u"..") throw Exception(name, "a dot segment is no name");
  if (name.find(u'/') != std::u16string::npos) throw Exception(name, "a name cannot hold '/'");
  if (name.find(u'\0') != std::u16string::npos) throw Exception(name, "a name cannot hold NUL");
}

std::u16string SpellingOf(const std::u16string& name) {
  try {
    return detail::CanonicalSpelling(name);
  } catch (const fl::filesystem::encoding_error&) {
    throw Exception(name, "it holds half a character");
  }
}

detail::NormalForm WithText(const detail::IdentifierRecord& record, std::u16string text) {
  return {std::move(text), record.schemeLength, record.pathStart, record.isRootless};
}

}  // namespace

detail::IdentifierRecord::IdentifierRecord(NormalForm&& form)
    : text(std::move(form.text)),
      schemeLength(form.schemeLength),
      pathStart(form.pathStart),
      isRootless(form.isRootless),
      hash(HashOf(text)) {}

AbsoluteIRI::AbsoluteIRI(const std::u16string& text) : AbsoluteIRI(detail::Normalize(text)) {}

AbsoluteIRI::AbsoluteIRI(detail::NormalForm&& form) : record_(new detail::IdentifierRecord(std::move(form))) {}

std::u16string AbsoluteIRI::getScheme() const { return record_->text.substr(0, record_->schemeLength); }

std::u16string AbsoluteIRI::getHost() const {
  if (record_->isRootless) return {};
  const std::size_t start = record_->schemeLength + std::u16string_view(u"://").size();
  return detail::DecodeEscapes(std::u16string_view(record_->text).substr(start, record_->pathStart - start));
}

std::u16string AbsoluteIRI::getName() const { return detail::DecodeEscapes(EscapedNameOf(*record_)); }

std::u16string AbsoluteIRI::getPath() const { return detail::DecodeEscapes(PathOf(*record_)); }

std::vector<std::u16string> AbsoluteIRI::getSegments() const {
  std::vector<std::u16string> segments;
  std::u16string_view rest = RelativePathOf(*record_);
  if (rest.empty()) return segments;

  for (std::size_t end = rest.find(u'/'); end != std::u16string_view::npos; end = rest.find(u'/')) {
    segments.push_back(detail::DecodeEscapes(rest.substr(0, end)));
    rest.remove_prefix(end + 1);
  }
  segments.push_back(detail::DecodeEscapes(rest));
  return segments;
}

AbsoluteIRI AbsoluteIRI::getParent() const {
  const std::u16string_view name = EscapedNameOf(*record_);
  if (name.empty()) return *this;

  std::u16string text = record_->text.substr(0, record_->text.size() - name.size());
  const std::size_t shortest = record_->pathStart + (record_->isRootless ? 0 : 1);
  while (text.size() > shortest && text.back() == u'/') text.pop_back();
  return AbsoluteIRI(WithText(*record_, std::move(text)));
}

AbsoluteIRI AbsoluteIRI::getChild(const std::u16string& name) const {
  RequireName(name);
  std::u16string text = record_->text;
  if (!RelativePathOf(*record_).empty()) text.push_back(u'/');
  detail::AppendEscaped(text, SpellingOf(name));
  return AbsoluteIRI(WithText(*record_, std::move(text)));
}

AbsoluteIRI AbsoluteIRI::getResolvedIRI() const {
  const detail::MountTable& mounts = *detail::SessionMounts();
  if (!mounts.HasAliases()) return *this;

  const std::u16string scheme = getScheme();
  const std::u16string resolved = mounts.Resolve(scheme);
  if (resolved == scheme) return *this;
  // Schemes differ in what their normal form is.
  return AbsoluteIRI(resolved + record_->text.substr(record_->schemeLength));
}

}  // namespace foundation::storage::vfs
