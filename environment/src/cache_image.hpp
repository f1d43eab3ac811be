// The bytes of a toolbox cache, checked as they are touched.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <foundation/storage/vfs/storage_provider.hpp>
#include <memory>
#include <span>
#include <string_view>

#include "cache_layout.hpp"

namespace Quorvex::PathEnvironment {

/// A toolbox cache in memory. What is handed out lies within its section, on pages that are as they were written; all
/// else throws ToolboxCacheError. What the numbers there mean, and whether they fit together, is the caller's business.
/// Immutable, safe from any thread.
class CacheImage {
 public:
  /// Checks the header and the table of checksums alone.
  explicit CacheImage(std::shared_ptr<const foundation::storage::vfs::MappedBytes> bytes);

  [[nodiscard]] const cache::Header& GetHeader() const noexcept { return header_; }

  [[nodiscard]] std::size_t SizeOf(cache::Section section) const noexcept { return SpanOf(section).size; }
  template <class Row>
  [[nodiscard]] std::size_t CountOf(cache::Section section) const noexcept {
    return SizeOf(section) / sizeof(Row);
  }

  [[nodiscard]] std::span<const std::byte> Bytes(cache::Section section, std::uint64_t offset,
                                                 std::uint64_t size) const;
  template <class Row>
  [[nodiscard]] std::span<const Row> Rows(cache::Section section, std::uint64_t first, std::uint64_t count) const {
    if (count > CountOf<Row>(section)) Damaged(section);
    const auto bytes = Bytes(section, first * sizeof(Row), count * sizeof(Row));
    return {reinterpret_cast<const Row*>(bytes.data()), static_cast<std::size_t>(count)};
  }
  template <class Row>
  [[nodiscard]] const Row& RowAt(cache::Section section, std::uint64_t index) const {
    return Rows<Row>(section, index, 1).front();
  }
  [[nodiscard]] std::string_view TextAt(const cache::Text& text) const;

  /// Touches every page.
  void CheckAll() const;

  /// Numbers in `section` that do not fit together.
  [[noreturn]] static void Damaged(cache::Section section);

 private:
  [[nodiscard]] const cache::Span& SpanOf(cache::Section section) const noexcept {
    return header_.sections[static_cast<std::size_t>(section)];
  }
  void CheckHeader() const;
  void CheckSections() const;
  void CheckPage(std::size_t page) const;
  void CheckPages(std::uint64_t begin, std::uint64_t end) const;

  std::shared_ptr<const foundation::storage::vfs::MappedBytes> bytes_;
  cache::Header header_;
  std::span<const std::uint64_t> sums_;
  // NOLINTNEXTLINE(modernize-avoid-c-arrays): its length is the file's business
  std::unique_ptr<std::atomic<bool>[]> isSound_;  // by page
};

}  // namespace Quorvex::PathEnvironment
