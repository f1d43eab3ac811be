// The names of a folder's files: sorted, packed, and found without a walk.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "lazy.hpp"
#include "text_piece.hpp"

namespace Quorvex::PathEnvironment {

/// A table of names as it is packed, to be kept elsewhere and made again from there.
struct PackedNames {
  std::span<const std::byte> block;
  std::uint32_t count = 0;
  bool isNarrow = true;
  bool hasDottedBaseNames = false;
};

/// A sorted table of file names, each cut into base name and extension. Immutable, safe from any thread.
///
/// One block: eight bytes for each name, then the names one after another; a byte a code unit where that is enough for
/// all of them.
class FolderNames {
 public:
  /// Reads the table without owning it, so that an index over many folders reaches their names in one step.
  class View {
   public:
    [[nodiscard]] std::size_t size() const noexcept { return count_; }
    /// Whether a base name holds a dot, other than as its first character.
    [[nodiscard]] bool HasDottedBaseNames() const noexcept { return hasDottedBaseNames_; }
    /// All full names, one after another.
    [[nodiscard]] TextPiece Text() const noexcept { return Piece(0, records_[count_].offset); }
    /// Where in Text() the name begins.
    [[nodiscard]] std::size_t OffsetOf(std::size_t index) const noexcept { return records_[index].offset; }
    [[nodiscard]] TextPiece FullName(std::size_t index) const noexcept {
      return Piece(records_[index].offset, records_[index + 1].offset);
    }
    [[nodiscard]] TextPiece BaseName(std::size_t index) const noexcept {
      return Piece(records_[index].offset, records_[index + 1].offset - records_[index].extensionLength);
    }
    [[nodiscard]] TextPiece Extension(std::size_t index) const noexcept {
      return Piece(records_[index + 1].offset - records_[index].extensionLength, records_[index + 1].offset);
    }

   private:
    friend class FolderNames;

    // A name ends where the next begins; a last record holds the end of all.
    struct Record {
      std::uint32_t offset;
      std::uint32_t extensionLength;
    };

    // Whether the names lie one after another within a text of `length` characters.
    [[nodiscard]] bool IsSound(std::size_t length) const noexcept;

    [[nodiscard]] TextPiece Piece(std::uint32_t begin, std::uint32_t end) const noexcept {
      const void* const text = records_ + count_ + 1;
      if (isNarrow_) return {static_cast<const unsigned char*>(text) + begin, end - begin};
      return {static_cast<const char16_t*>(text) + begin, end - begin};
    }

    const Record* records_ = nullptr;
    std::uint32_t count_ = 0;
    bool isNarrow_ = true;
    bool hasDottedBaseNames_ = false;
  };

  /// `fullNames` in any order; repeats count once.
  explicit FolderNames(std::vector<std::u16string> fullNames);

  /// What GetPacked gave, copied. Throws `std::invalid_argument` for bytes that no table of names is packed into.
  explicit FolderNames(const PackedNames& packed);

  [[nodiscard]] std::size_t size() const noexcept { return view_.size(); }

  /// Valid as long as the table.
  [[nodiscard]] PackedNames GetPacked() const noexcept;

  /// Valid as long as the table.
  [[nodiscard]] const View& GetView() const noexcept { return view_; }

  /// The name that reads `head` followed by `tail`, wherever it is cut itself. O(log n).
  [[nodiscard]] std::optional<std::size_t> Find(std::u16string_view head, std::u16string_view tail) const noexcept;

  /// The names that differ from `head` followed by `tail` in letter case at most, in name order. O(log n), but O(n log
  /// n) for the first call, which builds a table of folded names.
  [[nodiscard]] std::vector<std::size_t> FindIgnoringCase(std::u16string_view head, std::u16string_view tail) const;

  [[nodiscard]] bool HoldsTheSameAs(const FolderNames& other) const noexcept;

 private:
  struct FoldedName {
    std::u16string text;
    std::size_t index;
  };

  void Pack(const std::vector<std::u16string>& fullNames, std::size_t length);
  [[nodiscard]] std::vector<FoldedName> FoldAll() const;

  std::unique_ptr<std::byte[]> block_;  // NOLINT(modernize-avoid-c-arrays): records and text in one allocation
  std::size_t blockSize_ = 0;
  View view_;
  Lazy<std::vector<FoldedName>> folded_;
};

}  // namespace Quorvex::PathEnvironment
