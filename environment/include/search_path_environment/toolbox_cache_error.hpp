#pragma once

#include <cstdint>
#include <search_path_environment/export.hpp>
#include <stdexcept>
#include <string>

namespace Quorvex::PathEnvironment {

/// Why a toolbox cache cannot be used.
enum class CacheRefusal : std::uint8_t {
  Missing,         ///< there is no such file
  Unreadable,      ///< storage refused or failed, or what is there is no regular file
  Foreign,         ///< it is no toolbox cache
  OtherVersion,    ///< its format is another one
  OtherByteOrder,  ///< a machine of another kind wrote it
  OtherUser,       ///< its folders were read with other rights: another user's, other groups, other capabilities
  CutShort,        ///< its size is not the one that was written
  Damaged,         ///< some of its bytes are not those that were written
  OtherFolders,    ///< it does not hold all folders that are asked for
};

/// Nothing is lost: a cache holds what the folders hold themselves.
class SEARCH_PATH_ENVIRONMENT_EXPORT ToolboxCacheError : public std::runtime_error {
 public:
  /// `reason` is a sentence about "it", the file.
  ToolboxCacheError(CacheRefusal refusal, const std::string& reason);
  ToolboxCacheError(const ToolboxCacheError&) noexcept = default;
  ToolboxCacheError& operator=(const ToolboxCacheError&) noexcept = default;
  ~ToolboxCacheError() override;

  /// For programs, that take one refusal otherwise than another.
  [[nodiscard]] CacheRefusal GetRefusal() const noexcept { return refusal_; }

 private:
  CacheRefusal refusal_;
};

}  // namespace Quorvex::PathEnvironment
