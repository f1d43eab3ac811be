#include "process_rights.hpp"

#define XXH_INLINE_ALL
#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <xxhash.h>

#include <algorithm>
#include <array>
#include <vector>

namespace Quorvex::PathEnvironment {

namespace {

void AddGroups(std::vector<std::uint32_t>& rights) {
  std::vector<gid_t> groups(static_cast<std::size_t>(std::max(::getgroups(0, nullptr), 0)));
  groups.resize(static_cast<std::size_t>(std::max(::getgroups(static_cast<int>(groups.size()), groups.data()), 0)));
  groups.push_back(::getegid());
  std::sort(groups.begin(), groups.end());
  groups.erase(std::unique(groups.begin(), groups.end()), groups.end());
  rights.insert(rights.end(), groups.begin(), groups.end());
}

void AddCapabilities(std::vector<std::uint32_t>& rights) {
  __user_cap_header_struct header = {_LINUX_CAPABILITY_VERSION_3, 0};
  std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3> capabilities = {};
  if (::syscall(SYS_capget, &header, capabilities.data()) != 0) return;  // a kernel without them: the user decides
  for (const __user_cap_data_struct& some : capabilities) rights.push_back(some.effective);
}

}  // namespace

std::uint32_t RightsOfThisProcess() {
  std::vector<std::uint32_t> rights = {::geteuid()};
  AddCapabilities(rights);
  AddGroups(rights);
  return static_cast<std::uint32_t>(XXH3_64bits(rights.data(), rights.size() * sizeof(std::uint32_t)));
}

}  // namespace Quorvex::PathEnvironment
