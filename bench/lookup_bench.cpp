#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <search_path_utilities/lookup.hpp>
#include <string>
#include <vector>

#include "ask_in_turn.hpp"
#include "cases.hpp"
#include "compared.hpp"
#include "flat_map_floor.hpp"
#include "made_path.hpp"

namespace bench {

namespace {

using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::FindFirstFileVisibleOnPath;
using Quorvex::PathManagement::detail::SearchTarget;

using Names = std::vector<std::u16string>;

constexpr double kHitLimit = 3.5;
constexpr double kMissLimit = 3.0;
constexpr std::size_t kHotNames = 1'000;

const FlatMap& MapOf(std::size_t folders) {
  static std::map<std::size_t, FlatMap> maps;
  const auto found = maps.find(folders);
  if (found != maps.end()) return found->second;
  return maps.emplace(folders, FlatMapOf(PathOf(folders).names)).first->second;
}

void FindInMap(benchmark::State& state, std::size_t folders, const Names& names) {
  const FlatMap& map = MapOf(folders);
  AskInTurn(state, names, [&](const std::u16string& name) {
    const auto found = map.find(name);
    return found == map.end() ? 0U : found->second;
  });
}

void FindOnPath(benchmark::State& state, std::size_t folders, const Names& names, bool areThere) {
  static const std::vector<std::u16string> extensions = {u".vnx"};
  const MadePath& made = PathOf(folders);
  const std::size_t callsBefore = made.storage->GetCount();
  for (const std::u16string& name : names) {
    const auto found =
        FindFirstFileVisibleOnPath(*made.path, SearchTarget(name, extensions), FilenameMatchingPolicy::Native);
    if (found.has_value() != areThere) return state.SkipWithError("a hit is none, or a miss is one");
  }
  AskInTurn(state, names, [&](const std::u16string& name) {
    return FindFirstFileVisibleOnPath(*made.path, SearchTarget(name, extensions), FilenameMatchingPolicy::Native);
  });
  if (made.storage->GetCount() != callsBefore) state.SkipWithError("storage was called");
}

enum class Expected { Hits, Misses };

void Register(const std::string& what, Expected expected, std::size_t folders,
              const std::function<Names()>& makeNames) {
  const bool areThere = expected == Expected::Hits;
  const auto shared = std::make_shared<Names>();
  const auto namesOnce = [shared, makeNames]() -> const Names& {
    if (shared->empty()) *shared = Shuffled(makeNames());
    return *shared;
  };
  Compare(
      "lookup/" + std::to_string(folders) + " folders/" + what, areThere ? kHitLimit : kMissLimit,
      [=](benchmark::State& state) { FindInMap(state, folders, namesOnce()); },
      [=](benchmark::State& state) { FindOnPath(state, folders, namesOnce(), areThere); });
}

Names First(std::size_t count, Names names) {
  names.resize(std::min(count, names.size()));
  return names;
}

}  // namespace

void RegisterLookups() {
  for (const std::size_t folders : {100U, 1'000U, 10'000U}) {
    const std::size_t files = folders * kFilesInAFolder;
    Register("hits, every name", Expected::Hits, folders, [=] { return PathOf(folders).names; });
    Register("hits, hot", Expected::Hits, folders, [=] { return First(kHotNames, Shuffled(PathOf(folders).names)); });
    Register("hits that shadow others", Expected::Hits, folders, [=] { return PathOf(folders).shadowing; });
    Register("misses, many names", Expected::Misses, folders, [=] { return MissingNames(files); });
    Register("misses, hot", Expected::Misses, folders, [] { return MissingNames(kHotNames); });
  }
}

}  // namespace bench
