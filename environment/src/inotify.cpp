#include "inotify.hpp"

#include <sys/inotify.h>
#include <unistd.h>

#include <cerrno>

namespace Quorvex::PathEnvironment {

namespace {

class SystemInotify final : public Inotify {
 public:
  SystemInotify() : descriptor_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)), refusal_(errno) {}
  SystemInotify(const SystemInotify&) = delete;
  SystemInotify& operator=(const SystemInotify&) = delete;
  ~SystemInotify() override {
    if (descriptor_ != -1) ::close(descriptor_);
  }

  [[nodiscard]] int GetDescriptor() const override { return descriptor_; }
  int Add(const char* path, std::uint32_t mask) override {
    if (descriptor_ != -1) return ::inotify_add_watch(descriptor_, path, mask | IN_MASK_ADD);
    errno = refusal_;
    return -1;
  }
  void Remove(int watch) override { ::inotify_rm_watch(descriptor_, watch); }
  ssize_t Read(std::span<std::byte> buffer) override { return ::read(descriptor_, buffer.data(), buffer.size()); }

 private:
  int descriptor_;
  int refusal_;
};

}  // namespace

std::unique_ptr<Inotify> OpenInotify() { return std::make_unique<SystemInotify>(); }

}  // namespace Quorvex::PathEnvironment
