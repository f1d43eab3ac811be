#include <algorithm>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <random>
#include <search_path_utilities/composite_paths.hpp>
#include <string>
#include <unordered_set>

#include "bare_path.hpp"
#include "cases.hpp"
#include "compared.hpp"

namespace bench {

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using Quorvex::PathManagement::DeduplicatedPath;
using Quorvex::PathManagement::IPath;

constexpr std::size_t kEntries = 1000000;
constexpr std::size_t kPaths = 10;
constexpr double kLimit = 1.5;

AbsoluteIRI LocationOf(std::size_t number) {
  const std::string digits = std::to_string(number);
  return AbsoluteIRI(u"file:///toolboxes/folder" + std::u16string(digits.begin(), digits.end()));
}

// Every third location is one that stands elsewhere, too; in random order, as objects that know nothing of each other.
const std::vector<AbsoluteIRI>& Locations() {
  static const std::vector<AbsoluteIRI> locations = [] {
    std::vector<AbsoluteIRI> made;
    made.reserve(kEntries);
    for (std::size_t i = 0; i < kEntries; ++i) made.push_back(LocationOf(i % 3 == 2 ? i - 1 : i));
    std::shuffle(made.begin(), made.end(), std::mt19937_64(1));  // NOLINT(cert-msc51-cpp): the same in each run
    return made;
  }();
  return locations;
}

// The locations' entries, spread over ten paths.
const std::vector<std::shared_ptr<const IPath>>& Paths() {
  static const std::vector<std::shared_ptr<const IPath>> paths = [] {
    std::vector<std::shared_ptr<const IPath>> made;
    for (std::size_t path = 0; path < kPaths; ++path) {
      Entries entries;
      for (std::size_t i = path * kEntries / kPaths; i < (path + 1) * kEntries / kPaths; ++i) {
        entries.push_back(BareEntryAt(Locations()[i]));
      }
      made.push_back(BarePathOver(std::move(entries)));
    }
    return made;
  }();
  return paths;
}

void InsertIntoASet(benchmark::State& state) {
  const auto& locations = Locations();
  for (auto unused : state) {
    static_cast<void>(unused);
    std::unordered_set<AbsoluteIRI> seen;
    for (const AbsoluteIRI& location : locations) seen.insert(location);
    benchmark::DoNotOptimize(seen.size());
  }
}

void FirstList(benchmark::State& state) {
  const auto& paths = Paths();
  for (auto unused : state) {
    static_cast<void>(unused);
    const DeduplicatedPath path{std::vector(paths)};
    benchmark::DoNotOptimize(path.GetMainEntries()->size());
  }
}

}  // namespace

void RegisterDeduplication() {
  Compare("deduplicated/the first list of 1000000 entries", kLimit, InsertIntoASet, FirstList);
}

}  // namespace bench
