#pragma once

// How lookup tests say what a path was asked.

#include <gmock/gmock.h>

#include <search_path_utilities/lookup.hpp>
#include <string>
#include <support/call_log.hpp>
#include <vector>

namespace Quorvex::PathManagement::lookup_tests {

inline constexpr auto kPolicy = FilenameMatchingPolicy::CaseInsensitive;

/// One file name to look for, kept alive together with its list.
struct Wanted {
  explicit Wanted(std::u16string wantedName) : name(std::move(wantedName)) {}
  Wanted(const Wanted&) = delete;
  Wanted& operator=(const Wanted&) = delete;

  const std::u16string name;
  const std::vector<std::u16string> extensions{u".vnx"};
  const detail::SearchTarget target{name, extensions};
};

/// Passes for a call that got the array of `expected` itself.
MATCHER_P(AskedInScope, expected, "") {
  return arg.scope && arg.scope->begin() == expected.begin() && arg.scope->end() == expected.end();
}

/// Passes for a call that got this very target, and the caller's policy.
MATCHER_P(AskedForTarget, target, "") { return arg.target == target && arg.policy == kPolicy; }

/// Passes for the question for the class folders of that name, which is always asked under native comparison.
MATCHER_P(AskedForClassFoldersOf, name, "") {
  return testing::Matches(AskedInScope(MainScope))(arg) && arg.policy == FilenameMatchingPolicy::Native &&
         arg.text == name;
}

/// Passes for the one question that a partial pathname makes, whatever it names.
MATCHER_P(IsTheQuestionForAPartialPathname, target, "") {
  return arg.operation == "path.FindFirstInScope" &&
         testing::Matches(testing::AllOf(AskedInScope(VisibleScope), AskedForTarget(target)))(arg);
}

}  // namespace Quorvex::PathManagement::lookup_tests
