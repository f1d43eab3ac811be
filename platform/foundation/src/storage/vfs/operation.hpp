// What the failure of a storage operation has to tell, and what every provider checks alike.
#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <optional>
#include <string_view>
#include <system_error>
#include <vector>

namespace foundation::storage::vfs::detail {

/// An operation under way: what is done, and where.
class Operation {
 public:
  /// Fails at once for a rootless location.
  Operation(std::string_view verb, const AbsoluteIRI& location) : verb_(verb), location_(location) {
    if (location.isRootless()) throw Exception(verb, location, Invalid(), "the location is relative to no folder");
  }

  [[nodiscard]] const AbsoluteIRI& GetLocation() const noexcept { return location_; }

  [[noreturn]] void Fail(std::error_code error) const { throw Exception(verb_, location_, error); }
  [[noreturn]] void Fail(std::errc error) const { Fail(std::make_error_code(error)); }
  [[noreturn]] void Fail(std::error_code error, std::string_view reason) const {
    throw Exception(verb_, location_, error, reason);
  }

  static std::error_code Invalid() noexcept { return std::make_error_code(std::errc::invalid_argument); }

 private:
  std::string_view verb_;
  AbsoluteIRI location_;
};

/// The canonical location of what may be missing: `canonicalOf` is asked for the location, then for its parents, until
/// it knows one; the rest is added by name.
template <class CanonicalOf>
AbsoluteIRI CanonicalOfDeepestExisting(const AbsoluteIRI& location, const CanonicalOf& canonicalOf) {
  std::vector<std::u16string> missing;
  AbsoluteIRI existing = location;
  std::optional<AbsoluteIRI> canonical = canonicalOf(existing);
  for (; !canonical; canonical = canonicalOf(existing)) {
    missing.push_back(existing.getName());
    existing = existing.getParent();
  }
  for (; !missing.empty(); missing.pop_back()) canonical = canonical->getChild(missing.back());
  return *canonical;
}

}  // namespace foundation::storage::vfs::detail
