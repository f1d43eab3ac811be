#pragma once

#include <cstdint>
#include <foundation/export.hpp>
#include <foundation/msg_svc/eventmgr/event_mgr.hpp>
#include <string>

namespace storage::filefolderobserver {

/// Which frozen places a change concerns as well. So far there are none.
enum class FrozenInclusion : std::uint32_t { None = 0 };

/// What is posted when a file or folder may have changed. A value, safe to read from many threads; no storage is
/// touched.
class FOUNDATION_EXPORT FileFolderChangedEvent final : public foundation::msg_svc::eventmgr::Event {
 public:
  /// `path` is the text of the identifier of what has changed.
  FileFolderChangedEvent(std::u16string path, FrozenInclusion frozenInclusion);
  FileFolderChangedEvent(const FileFolderChangedEvent&) = default;
  FileFolderChangedEvent& operator=(const FileFolderChangedEvent&) = default;
  ~FileFolderChangedEvent() override;

  [[nodiscard]] FileFolderChangedEvent* clone() const override;
  /// The text of the identifier, in normal form.
  [[nodiscard]] const std::u16string& getPath() const noexcept { return path_; }
  /// As it was given.
  [[nodiscard]] FrozenInclusion getFrozenInclusion() const noexcept { return frozenInclusion_; }

 private:
  std::u16string path_;
  FrozenInclusion frozenInclusion_;
};

}  // namespace storage::filefolderobserver
