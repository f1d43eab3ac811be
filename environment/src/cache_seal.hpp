// The last step of making a toolbox cache: what tells damage from the bytes that were written.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <vector>

#include "cache_checksum.hpp"
#include "cache_layout.hpp"

namespace Quorvex::PathEnvironment::cache {

/// Ends `file`, in which the header's page is free and all sections but Sums stand, with that section, and puts
/// `header` into its page. O(n).
inline void Seal(std::string& file, Header header) {
  const std::size_t end = file.size();
  const auto bytes = std::as_bytes(std::span(file));
  std::vector<std::uint64_t> sums;
  for (std::size_t begin = kPageSize; begin < end; begin += kPageSize) {
    sums.push_back(ChecksumOf(bytes.subspan(begin, std::min(kPageSize, end - begin)), header.seed, begin / kPageSize));
  }
  header.sections.at(static_cast<std::size_t>(Section::Sums)) = {end, sums.size() * sizeof(std::uint64_t)};
  header.checksumOfSums = ChecksumOf(std::as_bytes(std::span(sums)), header.seed, 0);
  file.append(reinterpret_cast<const char*>(sums.data()), sums.size() * sizeof(std::uint64_t));
  header.fileSize = file.size();
  header.checksum = ChecksumOf(std::as_bytes(std::span(&header, 1)).first(offsetof(Header, checksum)), 0, 0);
  std::memcpy(file.data(), &header, sizeof(header));
}

}  // namespace Quorvex::PathEnvironment::cache
