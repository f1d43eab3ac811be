// How long each folder of a path takes to be read.
#pragma once

#include <chrono>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <functional>
#include <mutex>
#include <search_path_interfaces/factories.hpp>
#include <unordered_map>

namespace vornixpath {

/// Tells the time, std::chrono::steady_clock::now for instance.
using SteadyClock = std::function<std::chrono::steady_clock::time_point()>;

/// Lets another factory make entries, and measures each time. One folder is read after the other, however many threads
/// ask: a neighbour would take part of what is measured. Safe from any thread.
class TimedEntryFactory final : public Quorvex::PathManagement::IPathEntryFactory {
 public:
  /// `entries` must outlive this object.
  TimedEntryFactory(const Quorvex::PathManagement::IPathEntryFactory& entries, SteadyClock clock)
      : entries_(entries), clock_(std::move(clock)) {}

  [[nodiscard]] std::shared_ptr<const Quorvex::PathManagement::IPathEntry> CreateMainEntry(
      const foundation::storage::vfs::AbsoluteIRI& folder) const override;
  void WriteToolboxCache(std::ostream& out, const foundation::storage::vfs::AbsoluteIRI& toolboxRoot) const override;

  /// How long `folder`, with its special subfolders, took when it was last read; zero for one that never was.
  [[nodiscard]] std::chrono::nanoseconds TimeOf(const foundation::storage::vfs::AbsoluteIRI& folder) const;

 private:
  const Quorvex::PathManagement::IPathEntryFactory& entries_;
  SteadyClock clock_;
  mutable std::mutex mutex_;  // of the reading, too
  mutable std::unordered_map<foundation::storage::vfs::AbsoluteIRI, std::chrono::nanoseconds> times_;
};

}  // namespace vornixpath
