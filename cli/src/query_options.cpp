// The options that several queries have in common.

#include <algorithm>
#include <array>
#include <ranges>
#include <string_view>
#include <utility>

#include "command_syntax.hpp"
#include "joined_names.hpp"
#include "usage_error.hpp"

namespace vornixpath {

namespace {

constexpr std::array<std::pair<std::string_view, CacheUse>, 3> kUses = {
    {{"auto", CacheUse::Auto}, {"off", CacheUse::Off}, {"require", CacheUse::Require}}};

CacheUse UseNamed(const std::string& name) {
  const auto* const use =
      std::find_if(kUses.begin(), kUses.end(), [&](const auto& each) { return each.first == name; });
  if (use != kUses.end()) return use->second;
  throw UsageError("--cache is " + JoinedNames(kUses | std::views::keys, ", ", " or ") + ", not \"" + Displayed(name) +
                   '"');
}

}  // namespace

void AddFolderOptions(CLI::App& command, PathOptions& path) {
  command
      .add_option("--path", path.text,
                  "The folders to search, separated by ':' or ';';\n"
                  "relative ones are taken against the current folder.\n"
                  "Without it, --path-file or --session, the variable\n"
                  "VORNIX_PATH, or else the usual session's path")
      ->type_name("FOLDERS");
  command
      .add_option("--path-file", path.file,
                  "A file that names the folders, one a line: absolute,\n"
                  "relative to that file, or an identifier")
      ->type_name("FILE");
}

void AddPathOptions(CLI::App& command, PathOptions& path) {
  AddFolderOptions(command, path);
  AddSessionOption(command, path.session);
}

void AddSnapshotOption(CLI::App& command, PathOptions& path) {
  command
      .add_option("--snapshot", path.snapshot,
                  "A file that 'vornixpath snapshot' wrote, in place of\n"
                  "--path: the answer is that of then, and no folder is\n"
                  "looked into")
      ->type_name("FILE");
}

void AddCacheFileOption(CLI::App& command, PathOptions& path) {
  command
      .add_option("--cache-file", path.cacheFile,
                  "The file of the cache, in place of the usual one,\n"
                  "vornixpath/toolbox.cache in the user's cache folder")
      ->type_name("FILE");
}

void AddCacheOptions(CLI::App& command, PathOptions& path) {
  command
      .add_option_function<std::string>(
          "--cache", [&path](const std::string& use) { path.cache = UseNamed(use); },
          "Whether a cache that 'vornixpath cache write' wrote\n"
          "stands for folders: auto, where it is proven that they\n"
          "have not changed since; off; or require, as they were\n"
          "then, whatever has changed")
      ->type_name(OneOf(kUses | std::views::keys))
      ->default_str("auto");
  AddCacheFileOption(command, path);
}

void AddExtensionOption(CLI::App& command, std::string& extensions, const std::string& hint) {
  command.add_option("--ext", extensions, "The extensions to try, in order, separated by commas;\n'' for none" + hint)
      ->type_name(".A,.B")
      ->capture_default_str();
}

void AddUnreadableIsFailureFlag(CLI::App& command, bool& strict) {
  command.add_flag("--strict", strict, "End with 3 when a folder could not be read");
}

void RefuseImpossiblePath(const PathOptions& path) {
  if (path.text && path.file) throw UsageError("--path and --path-file exclude each other");
  if (path.session && path.text) throw UsageError("--session and --path exclude each other");
  if (path.session && path.file) throw UsageError("--session and --path-file exclude each other");
  if (path.snapshot && path.text) throw UsageError("--snapshot and --path exclude each other");
  if (path.snapshot && path.file) throw UsageError("--snapshot and --path-file exclude each other");
  if (path.snapshot && path.session) throw UsageError("--snapshot and --session exclude each other");
  RefuseEmptySession(path.session);
  if (path.snapshot && path.cache == CacheUse::Require)
    throw UsageError("--snapshot and --cache require exclude each other");
  if (path.cacheFile && path.cacheFile->empty()) throw UsageError("the FILE of --cache-file is empty");
  if (path.snapshot && path.snapshot->empty()) throw UsageError("the FILE of --snapshot is empty");
}

}  // namespace vornixpath
