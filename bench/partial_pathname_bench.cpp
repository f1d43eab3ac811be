#include <search_path_utilities/lookup.hpp>
#include <string>
#include <vector>

#include "ask_in_turn.hpp"
#include "cases.hpp"
#include "compared.hpp"
#include "made_path.hpp"

namespace bench {

namespace {

using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::FindFirstFileVisibleOnPath;
using Quorvex::PathManagement::VisibleScope;
using Quorvex::PathManagement::detail::SearchTarget;

constexpr double kLimit = 2.0;

const MadePath& Made() { return PathOf(10'000); }

auto FindFile(const std::u16string& name) {
  static const std::vector<std::u16string> extensions = {u".vnx"};
  return FindFirstFileVisibleOnPath(*Made().path, SearchTarget(name, extensions), FilenameMatchingPolicy::Native);
}

// As many plain names as there are partial ones, so that both are as warm.
void FindPlain(benchmark::State& state) {
  auto names = Shuffled(Made().names);
  names.resize(Made().packaged.size());
  AskInTurn(state, names, FindFile);
}

void FindPartial(benchmark::State& state) { AskInTurn(state, Shuffled(Made().packaged), FindFile); }

// The package is one of a thousand, and each of them holds the file.
void FindCommonFile(benchmark::State& state) {
  std::vector<std::u16string> names;
  for (const auto& name : Shuffled(Made().packaged)) names.push_back(name.substr(0, name.find(u'/') + 1) + kCommonName);
  AskInTurn(state, names, FindFile);
}

void FindFolder(benchmark::State& state) {
  std::vector<std::u16string> folders;
  for (const auto& name : Shuffled(Made().packaged)) folders.push_back(name.substr(0, name.find(u'/')));
  AskInTurn(state, folders, [](const std::u16string& folder) {
    return Made().path->GetPartiallyMatchingEntries(VisibleScope, folder, FilenameMatchingPolicy::Native).size();
  });
}

}  // namespace

void RegisterPartialPathnames() {
  Compare("partial pathname/a file in a package", kLimit, FindPlain, FindPartial);
  Compare("partial pathname/a file that each package holds", kLimit, FindPlain, FindCommonFile);
  Compare("partial pathname/the package's folder", kLimit, FindPlain, FindFolder);
}

}  // namespace bench
