#include "content_comparison.hpp"

#include <algorithm>

namespace vornixpath {

namespace {

using foundation::storage::vfs::IReadableFile;

constexpr std::size_t kPiece = std::size_t{256} << 10U;

// As many of the next bytes as there are and `buffer` takes.
std::span<const std::byte> NextPiece(IReadableFile& file, std::span<std::byte> buffer) {
  std::size_t length = 0;
  while (length < buffer.size()) {
    const std::size_t count = file.Read(buffer.subspan(length));
    if (count == 0) break;
    length += count;
  }
  return buffer.first(length);
}

}  // namespace

bool ContentComparison::AreEqual(IReadableFile& left, IReadableFile& right) {
  left_.resize(kPiece);
  right_.resize(kPiece);
  for (;;) {
    const auto leftPiece = NextPiece(left, left_);
    const auto rightPiece = NextPiece(right, right_);
    if (!std::equal(leftPiece.begin(), leftPiece.end(), rightPiece.begin(), rightPiece.end())) return false;
    if (leftPiece.size() < kPiece) return true;
  }
}

}  // namespace vornixpath
