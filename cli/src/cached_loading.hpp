// The part that a toolbox cache has in loading a path.
#pragma once

#include <cstddef>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <functional>
#include <optional>
#include <search_path_environment/toolbox_cache.hpp>
#include <string>
#include <vector>

#include "command_line.hpp"
#include "folder_list.hpp"
#include "loaded_path.hpp"

namespace vornixpath {

/// The usual file: vornixpath/toolbox.cache below XDG_CACHE_HOME, or else below .cache in HOME. Nothing where neither
/// is absolute.
[[nodiscard]] std::optional<foundation::storage::vfs::AbsoluteIRI> UsualCacheFile();

/// The file that `options` name, or the usual one. Throws UsageError when there is neither.
[[nodiscard]] foundation::storage::vfs::AbsoluteIRI CacheFileFor(const PathOptions& options);

/// Whether and where there is a cache to be used. A value.
struct CacheChoice {
  explicit CacheChoice(const PathOptions& options);

  CacheUse use;
  std::optional<foundation::storage::vfs::AbsoluteIRI> file;
};

/// How many of a cache's folders decide what is asked.
using CountDeciding = std::function<std::size_t(const Quorvex::PathEnvironment::ToolboxCache&)>;
[[nodiscard]] std::size_t CountAll(const Quorvex::PathEnvironment::ToolboxCache& cache);

/// The path over the folders of `list`, with the help of a cache where there is one. Warns of one that cannot be used;
/// throws std::runtime_error with the reason when it is required. A missing cache is no reason to warn.
[[nodiscard]] LoadedPath LoadListed(const FolderList& list, const CacheChoice& choice,
                                    const std::vector<foundation::storage::vfs::AbsoluteIRI>& masks,
                                    const CountDeciding& countDeciding);

}  // namespace vornixpath
