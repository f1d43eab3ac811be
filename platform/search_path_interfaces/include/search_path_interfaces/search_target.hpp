#pragma once

#include <boost/optional/optional.hpp>
#include <search_path_interfaces/export.hpp>
#include <string>
#include <vector>

namespace Quorvex::PathManagement::detail {

/// What a lookup searches for: a base name and the extensions to try, in order.
///
/// A target either borrows both from its caller, who keeps them alive and unchanged as long as the target is used, or
/// owns them. Copies and moves of an owning target point at their own parts; of a borrowing one, at the same caller's.
/// A target made from the parts of an owning one borrows from it, and must not be assigned to it.
class SEARCH_PATH_INTERFACES_EXPORT SearchTarget {
 public:
  /// Borrows.
  SearchTarget(const std::u16string& name, const std::vector<std::u16string>& extensions) noexcept
      : baseName_(&name), extensions_(&extensions) {}
  SearchTarget(const std::u16string&& name, const std::vector<std::u16string>& extensions) = delete;
  SearchTarget(const std::u16string& name, const std::vector<std::u16string>&& extensions) = delete;
  SearchTarget(const std::u16string&& name, const std::vector<std::u16string>&& extensions) = delete;

  /// Owns one base name and the one extension to try; an empty extension asks for the exact file name.
  [[nodiscard]] static SearchTarget Owning(std::u16string baseName, std::u16string extension);

  SearchTarget(const SearchTarget& other);
  SearchTarget(SearchTarget&& other) noexcept;
  SearchTarget& operator=(const SearchTarget& other);
  SearchTarget& operator=(SearchTarget&& other) noexcept;
  ~SearchTarget() = default;

  /// What stands before the extension; may hold separators, and then names folders, too. Valid as long as what owns it.
  [[nodiscard]] const std::u16string& GetBaseName() const noexcept { return *baseName_; }
  /// Each with its dot, the preferred one first. Valid as long as what owns them.
  [[nodiscard]] const std::vector<std::u16string>& GetExtensions() const noexcept { return *extensions_; }
  /// False when both texts are the caller's.
  [[nodiscard]] bool OwnsItsParts() const noexcept { return ownedBaseName_.has_value(); }

 private:
  struct OwnedParts {
    std::u16string baseName;
    std::vector<std::u16string> extensions;
  };
  explicit SearchTarget(OwnedParts parts) noexcept;
  void PointAtOwnPartsOr(const SearchTarget& other) noexcept;

  boost::optional<std::u16string> ownedBaseName_;
  boost::optional<std::vector<std::u16string>> ownedExtensions_;
  const std::u16string* baseName_;
  const std::vector<std::u16string>* extensions_;
};

}  // namespace Quorvex::PathManagement::detail
