// A snapshot from any bytes: it is understood or refused with a line, and what is understood is written so that it is
// understood alike. The checksum is put right, or nothing would get past it.
#define XXH_INLINE_ALL
#include <xxhash.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <search_path_environment/path_snapshot.hpp>
#include <string>
#include <string_view>

#include "require.hpp"

namespace {

using Quorvex::PathEnvironment::PathSnapshot;
using Quorvex::PathEnvironment::SnapshotError;

std::string WithChecksum(std::string lines) {
  std::array<char, 17> digits = {};
  static_cast<void>(std::snprintf(digits.data(), digits.size(), "%016llx",
                                  static_cast<unsigned long long>(XXH3_64bits(lines.data(), lines.size()))));
  return lines + "checksum " + digits.data() + '\n';
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string lines(reinterpret_cast<const char*>(data), size);
  try {
    static_cast<void>(PathSnapshot::Parse(lines));
  } catch (const SnapshotError& error) {
    Require(error.GetLine() >= 1);
  }
  try {
    const PathSnapshot snapshot = PathSnapshot::Parse(WithChecksum(lines));
    const std::string written = snapshot.ToBytes();
    const PathSnapshot again = PathSnapshot::Parse(written, snapshot.path.get());
    Require(again.ToBytes() == written);
    Require(*again.path->GetMainEntries() == *snapshot.path->GetMainEntries());
  } catch (const SnapshotError& error) {
    Require(error.GetLine() >= 1);
  }
  return 0;
}
