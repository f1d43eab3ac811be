// The hashes of a toolbox cache: of pages, and of the names it is asked for.
#pragma once

#define XXH_INLINE_ALL
#include <xxhash.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace Quorvex::PathEnvironment::cache {

/// Of the page with that number, in a file with that seed: neither another page nor another file's has the same.
[[nodiscard]] inline std::uint64_t ChecksumOf(std::span<const std::byte> bytes, std::uint64_t seed,
                                              std::uint64_t page) noexcept {
  return XXH3_64bits_withSeed(bytes.data(), bytes.size(), seed + page * 0x9E3779B97F4A7C15ULL);
}

[[nodiscard]] inline std::uint64_t HashOfName(std::u16string_view name) noexcept {
  return XXH3_64bits(name.data(), name.size() * sizeof(char16_t));
}

/// A name's place among the buckets, whose count is a power of two.
[[nodiscard]] inline std::uint32_t BucketOf(std::uint64_t hash, std::size_t buckets) noexcept {
  return static_cast<std::uint32_t>(hash & (buckets - 1));
}

/// What a posting keeps of a hash: what its bucket does not tell.
[[nodiscard]] inline std::uint32_t KeptOf(std::uint64_t hash) noexcept {
  return static_cast<std::uint32_t>(hash >> 32U);
}

}  // namespace Quorvex::PathEnvironment::cache
