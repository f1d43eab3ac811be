// An identifier whose links have been followed. A value, safe to read from many threads; no storage is touched.
#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <string>

namespace foundation::storage::vfs {

/// A canonical location, with a text to show to people. Equality looks at the location alone.
class CanonicalAbsoluteIRI {
 public:
  /// `iri` is canonical: whoever makes this vouches for it, nothing is asked.
  CanonicalAbsoluteIRI(const AbsoluteIRI& iri, const std::u16string& shownText) : iri_(iri), shownText_(shownText) {}

  /// The location, links followed.
  [[nodiscard]] const AbsoluteIRI& getAbsoluteIRI() const& noexcept { return iri_; }
  /// The same, of an object that is about to go.
  [[nodiscard]] AbsoluteIRI getAbsoluteIRI() && noexcept { return iri_; }
  /// What people know the place by; may be spelled otherwise than the location.
  [[nodiscard]] const std::u16string& getShownText() const noexcept { return shownText_; }

  /// Whether both are the same place, however they are shown.
  friend bool operator==(const CanonicalAbsoluteIRI& left, const CanonicalAbsoluteIRI& right) noexcept {
    return left.iri_ == right.iri_;
  }

 private:
  AbsoluteIRI iri_;
  std::u16string shownText_;
};

}  // namespace foundation::storage::vfs
