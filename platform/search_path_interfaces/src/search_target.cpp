#include <search_path_interfaces/search_target.hpp>
#include <utility>

namespace Quorvex::PathManagement::detail {

SearchTarget::SearchTarget(OwnedParts parts) noexcept
    : ownedBaseName_(std::move(parts.baseName)),
      ownedExtensions_(std::move(parts.extensions)),
      baseName_(ownedBaseName_.get_ptr()),
      extensions_(ownedExtensions_.get_ptr()) {}

SearchTarget SearchTarget::Owning(std::u16string baseName, std::u16string extension) {
  OwnedParts parts{std::move(baseName), {}};
  parts.extensions.push_back(std::move(extension));
  return SearchTarget(std::move(parts));
}

SearchTarget::SearchTarget(const SearchTarget& other)
    : ownedBaseName_(other.ownedBaseName_), ownedExtensions_(other.ownedExtensions_) {
  PointAtOwnPartsOr(other);
}

SearchTarget::SearchTarget(SearchTarget&& other) noexcept
    : ownedBaseName_(std::move(other.ownedBaseName_)), ownedExtensions_(std::move(other.ownedExtensions_)) {
  PointAtOwnPartsOr(other);
}

// By copy and move, so that a failed copy leaves this target as it was.
SearchTarget& SearchTarget::operator=(const SearchTarget& other) { return *this = SearchTarget(other); }

SearchTarget& SearchTarget::operator=(SearchTarget&& other) noexcept {
  if (this == &other) return *this;
  ownedBaseName_ = std::move(other.ownedBaseName_);
  ownedExtensions_ = std::move(other.ownedExtensions_);
  PointAtOwnPartsOr(other);
  return *this;
}

void SearchTarget::PointAtOwnPartsOr(const SearchTarget& other) noexcept {
  baseName_ = ownedBaseName_ ? ownedBaseName_.get_ptr() : other.baseName_;
  extensions_ = ownedExtensions_ ? ownedExtensions_.get_ptr() : other.extensions_;
}

}  // namespace Quorvex::PathManagement::detail
