#include "scope_name.hpp"

#include <algorithm>
#include <array>
#include <search_path_utilities/lookup.hpp>

#include "all_kinds.hpp"

namespace vornixpath {

namespace {

using Quorvex::PathManagement::PathEntryType;
using Quorvex::PathManagement::SearchScope;

template <PathEntryType Kind>
SearchScope Only() {
  static constexpr PathEntryType kKind = Kind;
  return {&kKind, &kKind + 1};
}

struct NamedScope {
  const char* name;
  SearchScope scope;
};

std::array<NamedScope, 7> NamedScopes() {
  return {{{"main", Quorvex::PathManagement::MainScope},
           {"visible", Quorvex::PathManagement::VisibleScope},
           {"all", AllKinds()},
           {"package", Only<PathEntryType::Package>()},
           {"class", Only<PathEntryType::Class>()},
           {"private", Only<PathEntryType::Private>()},
           {"resources", Only<PathEntryType::Resources>()}}};
}

}  // namespace

std::vector<std::string> ScopeNames() {
  std::vector<std::string> names;
  for (const NamedScope& scope : NamedScopes()) names.emplace_back(scope.name);
  return names;
}

SearchScope ScopeFromName(const std::string& name) {
  const auto scopes = NamedScopes();
  return std::find_if(scopes.begin(), scopes.end(), [&](const NamedScope& scope) { return scope.name == name; })->scope;
}

}  // namespace vornixpath
