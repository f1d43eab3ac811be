#pragma once

#include <array>
#include <search_path_interfaces/search_scope.hpp>

namespace vornixpath {

/// Every kind of folder, resources included.
[[nodiscard]] inline Quorvex::PathManagement::SearchScope AllKinds() noexcept {
  using Kind = Quorvex::PathManagement::PathEntryType;
  static constexpr std::array kKinds = {Kind::Main,    Kind::Package,   Kind::Class,
                                        Kind::Private, Kind::Auxiliary, Kind::Resources};
  return {kKinds.data(), kKinds.data() + kKinds.size()};
}

}  // namespace vornixpath
