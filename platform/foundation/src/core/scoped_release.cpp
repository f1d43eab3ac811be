#include <foundation/core/scoped_release.hpp>
#include <utility>

namespace foundation::core {

ScopedRelease::ScopedRelease() noexcept = default;

ScopedRelease::ScopedRelease(std::function<void()> release) noexcept : release_(std::move(release)) {}

ScopedRelease::ScopedRelease(ScopedRelease&& other) noexcept : release_(std::exchange(other.release_, nullptr)) {}

ScopedRelease& ScopedRelease::operator=(ScopedRelease&& other) noexcept {
  ScopedRelease incoming(std::move(other));
  release_.swap(incoming.release_);
  return *this;
}

ScopedRelease::~ScopedRelease() { Release(); }

void ScopedRelease::Release() noexcept {
  if (const auto release = std::exchange(release_, nullptr)) release();
}

}  // namespace foundation::core
