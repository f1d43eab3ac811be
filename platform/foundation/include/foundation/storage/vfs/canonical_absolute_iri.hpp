// An identifier whose links have been followed. A value, safe to read from many threads; no storage is touched.
#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <string>

namespace foundation::storage::vfs {

/// A canonical location, with a text to show to people. Equality looks at the location alone.
class CanonicalAbsoluteIRI {
 public:
  CanonicalAbsoluteIRI(const AbsoluteIRI& iri, const std::u16string& shownText) : iri_(iri), shownText_(shownText) {}

  [[nodiscard]] const AbsoluteIRI& getAbsoluteIRI() const& noexcept { return iri_; }
  [[nodiscard]] AbsoluteIRI getAbsoluteIRI() && noexcept { return iri_; }
  [[nodiscard]] const std::u16string& getShownText() const noexcept { return shownText_; }

  friend bool operator==(const CanonicalAbsoluteIRI& left, const CanonicalAbsoluteIRI& right) noexcept {
    return left.iri_ == right.iri_;
  }

 private:
  AbsoluteIRI iri_;
  std::u16string shownText_;
};

}  // namespace foundation::storage::vfs
