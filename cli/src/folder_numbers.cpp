#include "folder_numbers.hpp"

#include <unordered_set>

namespace vornixpath {

using Quorvex::PathEnvironment::PathProblem;
using Quorvex::PathEnvironment::ProblemKind;

FolderNumbers::FolderNumbers(const Quorvex::PathEnvironment::FolderPath& path) : path_(path) {
  // A repeat has a number of its own, but no entry.
  std::unordered_set<std::size_t> repeats;
  for (const PathProblem& problem : path.GetProblems()) {
    if (problem.kind == ProblemKind::Repeated) repeats.insert(problem.position);
  }

  const auto folders = path.GetMainEntries();
  std::size_t position = 0;
  for (const auto& entry : *folders) {
    while (repeats.count(position) != 0) ++position;
    numbers_.emplace(entry.get(), ++position);
  }
}

std::size_t FolderNumbers::NumberOf(const Quorvex::PathManagement::IPathEntry& entry) const {
  return numbers_.at(path_.GetMainEntryForEntry(entry).get());
}

}  // namespace vornixpath
