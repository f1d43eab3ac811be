#include <search_path_utilities/lookup.hpp>
#include <string>
#include <vector>

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

template <class Ask>
void AskInTurn(benchmark::State& state, const std::vector<std::u16string>& names, const Ask& ask) {
  std::size_t next = 0;
  for (auto unused : state) {
    static_cast<void>(unused);
    benchmark::DoNotOptimize(ask(names[next]));
    if (++next == names.size()) next = 0;
  }
}

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
  Compare("partial pathname/the package's folder", kLimit, FindPlain, FindFolder);
}

}  // namespace bench
