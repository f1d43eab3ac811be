#pragma once

#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <future>
#include <system_error>

namespace Quorvex::PathManagement::support {

/// Does `action` as somebody for whom the modes of files and folders count, whoever runs the tests: on a thread of its
/// own, which has given up what lets the superuser pass. Throws what `action` throws.
template <class Action>
void WithoutPrivileges(const Action& action) {
  std::async(std::launch::async, [&action] {
    __user_cap_header_struct thisThread{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct none[_LINUX_CAPABILITY_U32S_3]{};
    if (::syscall(SYS_capset, &thisThread, none) == -1) throw std::system_error(errno, std::generic_category());
    action();
  }).get();
}

}  // namespace Quorvex::PathManagement::support
