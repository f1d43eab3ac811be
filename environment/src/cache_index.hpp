// From a name to the entries of a toolbox cache that bear it, without making any.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "cache_image.hpp"

namespace Quorvex::PathEnvironment {

/// Answers by hashes: whoever is named may bear the name, whoever is not does not. Touches the bucket of the name
/// alone. Safe from any thread.
class CacheIndex {
 public:
  /// Throws ToolboxCacheError when there is no index to speak of.
  explicit CacheIndex(const CacheImage& image);

  /// The ordinals of entries that hold a file of this base name and extension, rising.
  [[nodiscard]] std::vector<std::uint32_t> HoldersOf(std::u16string_view baseName, std::u16string_view extension) const;
  /// The ordinals of class folders of this name, written without '@', rising.
  [[nodiscard]] std::vector<std::uint32_t> ClassFoldersOf(std::u16string_view name) const;

 private:
  template <class IsMeant>
  [[nodiscard]] std::vector<std::uint32_t> Find(std::u16string_view name, const IsMeant& isMeant) const;

  const CacheImage& image_;
  std::size_t buckets_;
};

}  // namespace Quorvex::PathEnvironment
