// Cases for an instruction counter, which repeats to a per mille where times do not: `instructions CASE COUNT` asks
// COUNT questions of a flat map inside `MeasuredMap`, then of a path of a hundred folders inside `MeasuredPath`.

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <search_path_utilities/lookup.hpp>
#include <string>
#include <vector>

#include "flat_map_floor.hpp"
#include "made_path.hpp"

namespace {

using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::FindFirstFileVisibleOnPath;
using Quorvex::PathManagement::detail::SearchTarget;

using Names = std::vector<std::u16string>;

const bench::MadePath& Made() { return bench::PathOf(100); }

std::size_t AskMap(const bench::FlatMap& map, const std::u16string& name) {
  const auto found = map.find(name);
  return found == map.end() ? 0 : found->second + 1;
}

std::size_t AskPath(const std::u16string& name) {
  static const Names extensions = {u".vnx"};
  const auto found =
      FindFirstFileVisibleOnPath(*Made().path, SearchTarget(name, extensions), FilenameMatchingPolicy::Native);
  return found ? 1 : 0;
}

}  // namespace

extern "C" {

[[gnu::noinline]] std::size_t MeasuredMap(const bench::FlatMap& map, const Names& names, std::size_t count) {
  std::size_t answers = 0;
  for (std::size_t i = 0; i < count; ++i) answers += AskMap(map, names[i % names.size()]);
  return answers;
}

[[gnu::noinline]] std::size_t MeasuredPath(const Names& names, std::size_t count) {
  std::size_t answers = 0;
  for (std::size_t i = 0; i < count; ++i) answers += AskPath(names[i % names.size()]);
  return answers;
}
}

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: instructions hits|shadowing|misses|packaged COUNT\n");
    return 2;
  }
  const std::string what = argv[1];
  const std::size_t count = std::strtoull(argv[2], nullptr, 10);
  const Names names = bench::Shuffled(what == "hits"        ? Made().names
                                      : what == "shadowing" ? Made().shadowing
                                      : what == "packaged"  ? Made().packaged
                                                            : bench::MissingNames(1000));
  const bench::FlatMap map = bench::FlatMapOf(Made().names);
  std::printf("%zu %zu\n", MeasuredMap(map, names, count), MeasuredPath(names, count));
  return 0;
}
