// What the first name on a long path costs, as people ask for it: a process of the tool with a cache, beside the least
// that any process would have to do.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "cases.hpp"
#include "compared.hpp"
#include "process.hpp"
#include "real_tree.hpp"

namespace bench {

namespace {

constexpr double kLimitTrusted = 2.5;
constexpr double kLimitProven = 1.5;

// The first folders of the tree as a path, with a cache of it and a sorted table of its names.
class CachedFolders {
 public:
  explicit CachedFolders(std::size_t count)
      : base_(std::filesystem::path(RealFolders().front()).parent_path() / ("path of " + std::to_string(count))) {
    const std::vector<std::string> folders(RealFolders().begin(),
                                           RealFolders().begin() + static_cast<std::ptrdiff_t>(count));
    std::ofstream list(List());
    std::vector<std::string> names;
    for (const std::string& folder : folders) {
      list << folder << '\n';
      for (const auto& file : std::filesystem::directory_iterator(folder)) names.push_back(file.path().filename());
    }
    list.close();
    last_ = std::filesystem::directory_iterator(folders.back())->path().filename();
    std::sort(names.begin(), names.end());
    std::ofstream table(Names());
    for (const std::string& name : names) table << name << '\n';
    table.close();
    Run({TOOL, "cache", "write", "--path-file", List(), "--cache-file", Cache()});
  }

  /// A name that the last folder alone holds.
  [[nodiscard]] const std::string& GetLastName() const { return last_; }
  [[nodiscard]] std::string List() const { return base_ + ".list"; }
  [[nodiscard]] std::string Names() const { return base_ + ".names"; }
  [[nodiscard]] std::string Cache() const { return base_ + ".cache"; }

 private:
  std::string base_;
  std::string last_;
};

std::function<void(benchmark::State&)> Running(const std::function<std::vector<std::string>()>& words) {
  return [words](benchmark::State& state) {
    const std::vector<std::string> command = words();
    for (auto unused : state) {
      static_cast<void>(unused);
      Run(command);
    }
  };
}

void Register(std::size_t count, double limitProven) {
  const auto folders = [count]() -> const CachedFolders& {
    static std::map<std::size_t, CachedFolders> made;
    return made.try_emplace(count, count).first->second;
  };
  const auto asking = [folders](const char* use) {
    return Running([folders, use] {
      const CachedFolders& path = folders();
      return std::vector<std::string>{
          TOOL, "which", path.GetLastName(), "--path-file", path.List(), "--cache-file", path.Cache(), "--cache", use};
    });
  };
  const std::string name = "start/" + std::to_string(count) + " folders of 100 files, ";
  Compare(name + "cache trusted", kLimitTrusted, Running([folders] {
            return std::vector<std::string>{BARE_START, folders().Names(), folders().GetLastName()};
          }),
          asking("require"));
  Compare(name + "every folder proven", limitProven, Running([folders] {
            return std::vector<std::string>{BARE_START, folders().Names(), folders().GetLastName(), folders().List()};
          }),
          asking("auto"));
}

}  // namespace

void RegisterStarting() {
  Register(1'000, kLimitTrusted);  // of which the start of a process is still the greater part
  Register(kRealFolders, kLimitProven);
}

}  // namespace bench
