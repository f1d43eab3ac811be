// The names of a folder's files: sorted, packed, and found without a walk.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "lazy.hpp"

namespace Quorvex::PathEnvironment {

/// A sorted table of file names, each cut into base name and extension. Immutable, safe from any thread.
///
/// Base names stand one after another in one text, twelve bytes beside each; extensions stand once.
class FolderNames {
 public:
  /// `fullNames` in any order; repeats count once.
  explicit FolderNames(std::vector<std::u16string> fullNames);

  [[nodiscard]] std::size_t size() const noexcept { return records_.size(); }

  /// Views stay valid as long as the table.
  [[nodiscard]] std::u16string_view BaseName(std::size_t index) const noexcept;
  [[nodiscard]] std::u16string_view Extension(std::size_t index) const noexcept;

  /// The name that reads `head` followed by `tail`, wherever it is cut itself. O(log n).
  [[nodiscard]] std::optional<std::size_t> Find(std::u16string_view head, std::u16string_view tail) const noexcept;

  /// The names that differ from `head` followed by `tail` in letter case at most, in name order. O(log n), but O(n log
  /// n) for the first call, which builds a table of folded names.
  [[nodiscard]] std::vector<std::size_t> FindIgnoringCase(std::u16string_view head, std::u16string_view tail) const;

 private:
  struct Record {
    std::uint32_t offset;
    std::uint32_t baseLength;
    std::uint32_t extension;
  };
  struct FoldedName {
    std::u16string text;
    std::size_t index;
  };

  using ExtensionNumbers = std::unordered_map<std::u16string, std::uint32_t>;

  void Add(const std::u16string& fullName, ExtensionNumbers& known);
  [[nodiscard]] std::uint32_t InternExtension(const std::u16string& extension, ExtensionNumbers& known);
  [[nodiscard]] std::vector<FoldedName> FoldAll() const;

  std::u16string baseNames_;
  std::vector<Record> records_;
  std::vector<std::u16string> extensions_;
  Lazy<std::vector<FoldedName>> folded_;
};

}  // namespace Quorvex::PathEnvironment
