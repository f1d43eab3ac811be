// What one change of a path costs, counted in bytes that are asked of the allocator: whatever is indexed or copied
// needs some.

#include <gmock/gmock.h>

#include <algorithm>
#include <iostream>
#include <numeric>
#include <search_path_environment/folder_path.hpp>
#include <support/allocations.hpp>

#include "made_entry.hpp"

namespace Quorvex::PathEnvironment {
namespace {

constexpr std::size_t kChanges = 1'000;

FolderEntryPtr NumberedEntry(std::size_t number, std::size_t version) {
  const std::string digits = std::to_string(number);
  const std::string mark = std::to_string(version);
  return MadeEntry(u"memory:///d" + std::u16string(digits.begin(), digits.end()))
      .WithFiles({u"f.x", u"v" + std::u16string(mark.begin(), mark.end()) + u".x"})
      .Create();
}

// The bytes that each of many changes of one folder asks for, in a path of that length.
std::vector<std::size_t> CostsOfChanges(std::size_t length) {
  std::vector<FolderPath::Folder> folders;
  folders.reserve(length);
  for (std::size_t number = 0; number < length; ++number) folders.push_back({NumberedEntry(number, 0), number});
  std::shared_ptr<const FolderPath> path = std::make_shared<const FolderPath>(folders, std::vector<PathProblem>());

  std::vector<std::size_t> costs;
  for (std::size_t change = 1; change <= kChanges; ++change) {
    const auto entry = NumberedEntry(change * 7919 % length, change);
    const PathManagement::support::Allocations allocations;
    path = path->WithReplaced({entry});
    costs.push_back(allocations.GetBytes());
  }
  return costs;
}

double Average(const std::vector<std::size_t>& costs) {
  return static_cast<double>(std::accumulate(costs.begin(), costs.end(), std::size_t{0})) /
         static_cast<double>(costs.size());
}

std::size_t Median(std::vector<std::size_t> costs) {
  std::nth_element(costs.begin(), costs.begin() + kChanges / 2, costs.end());
  return costs[kChanges / 2];
}

TEST(ChangesOfAPath, CostAsMuchOnALongPathAsOnAShortOne) {
  const auto onShort = CostsOfChanges(400);
  const auto onLong = CostsOfChanges(4'000);

  std::cout << "bytes a change, on average: " << Average(onShort) << " on 400 folders, " << Average(onLong)
            << " on 4000; median " << Median(onShort) << " and " << Median(onLong) << '\n';
  EXPECT_LT(Average(onLong), 1.5 * Average(onShort));
  EXPECT_LT(2 * Median(onLong), 3 * Median(onShort));
  // Most changes touch nothing that is as long as the path: not even a pointer each of its folders.
  EXPECT_LT(Median(onLong), 4'000 * sizeof(void*));
}

TEST(ChangesOfAPath, MakeAllOfItNewOnceInAWhileOnly) {
  const auto costs = CostsOfChanges(4'000);

  constexpr std::size_t allOfIt = 64 * std::size_t{4'000};
  const auto many = std::count_if(costs.begin(), costs.end(), [](std::size_t cost) { return cost > allOfIt; });

  EXPECT_GE(many, 1);
  EXPECT_LE(many, static_cast<std::ptrdiff_t>(kChanges * 16 / 4'000 + 1));
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
