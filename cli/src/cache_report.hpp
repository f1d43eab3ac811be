// What the commands about the cache tell.
#pragma once

#include <cstddef>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <search_path_environment/toolbox_cache.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "cache_standing.hpp"

namespace vornixpath {

/// A folder that a cache holds, read again.
struct VerifiedFolder {
  Quorvex::PathEnvironment::RecordedFolder recorded;
  bool isTheSame;  ///< whether it holds what is recorded
};

/// Reads every folder that `cache` holds.
[[nodiscard]] std::vector<VerifiedFolder> CompareWithDisk(const Quorvex::PathEnvironment::ToolboxCache& cache);

/// A folder that is proven and yet holds something else: that must never be.
[[nodiscard]] bool IsWrong(const VerifiedFolder& folder);
[[nodiscard]] bool IsAnyWrong(const std::vector<VerifiedFolder>& folders);

void ReportWritten(const foundation::storage::vfs::AbsoluteIRI& file,
                   const Quorvex::PathEnvironment::ToolboxCache& cache, bool json);
void ReportRefused(const foundation::storage::vfs::AbsoluteIRI& file,
                   const Quorvex::PathEnvironment::ToolboxCacheError& error, bool json);
void ReportStatus(const foundation::storage::vfs::AbsoluteIRI& file,
                  const Quorvex::PathEnvironment::ToolboxCache& cache, const CacheStanding& standing, bool json);
void ReportVerified(const foundation::storage::vfs::AbsoluteIRI& file,
                    const Quorvex::PathEnvironment::ToolboxCache& cache, const std::vector<VerifiedFolder>& folders,
                    bool json);

}  // namespace vornixpath
