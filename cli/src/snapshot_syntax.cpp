// The commands that keep the state of a path, and compare what was kept.

#include <tuple>

#include "command_syntax.hpp"
#include "compared_side.hpp"
#include "usage_error.hpp"

namespace vornixpath {

namespace {

// An option that has no part in the answer was meant to have one.
void RefuseIdleOptions(const CompareOptions& options) {
  const auto isSide = [&](const char* name) { return options.before == name || options.after == name; };
  if (options.session && !isSide(kSavedSide)) throw UsageError("--session is for 'saved', which is not compared");
  if ((options.path.text || options.path.file) && !isSide(kCurrentSide)) {
    throw UsageError("--path and --path-file are for 'now', which is not compared");
  }
}

}  // namespace

CommandSyntax AddSnapshot(CLI::App& app) {
  const auto options = std::make_shared<SnapshotOptions>();
  CLI::App& command = AddCommand(app, "snapshot", "FILE", "Keep in FILE what the folders of the path hold now");
  options->path.cache = CacheUse::Off;  // what is kept is what was read
  AddPathOptions(command, options->path);
  AddUnreadableIsFailureFlag(command, options->strict);
  command.footer(
      "FILE answers which, why, match and files under --snapshot, later or on another machine, and 'vornixpath\n"
      "compare' tells what has changed since. Only names are kept, not what stands in the files. A snapshot that is\n"
      "there already is replaced, nothing else is.\n"
      "Exit status: 0 written, 2 wrong usage, 3 written, but see --strict, 4 could not work.\n\n"
      "  vornixpath snapshot monday.snapshot --path ~/toolbox:~/more");
  return {&command, [options](const Positionals& positionals) {
            options->file = positionals.ExactlyOne("FILE");
            RefuseImpossiblePath(options->path);
            if (options->file.empty()) throw UsageError("FILE is empty");
            if (options->file == "-") throw UsageError("a snapshot goes into a file; one named '-' is './-'");
            return *options;
          }};
}

CommandSyntax AddCompare(CLI::App& app) {
  const auto options = std::make_shared<CompareOptions>();
  CLI::App& command =
      AddCommand(app, "compare", "OLD NEW", "Tell what changed from one path, or state of it, to another");
  command.add_flag("--deep", options->isDeep,
                   "Tell special folders within those that changed, too,\n"
                   "and of those refreshed the files that came and went");
  command.add_flag("--effects", options->tellsEffects, "Tell names that mean another file, or none any more");
  AddExtensionOption(command, options->extensions);
  AddFolderOptions(command, options->path);
  AddSessionOption(command, options->session);
  AddUnreadableIsFailureFlag(command, options->strict);
  AddJsonFlag(command, options->json);
  command.footer(
      "OLD and NEW are each 'saved', the session's path; 'now', the path that queries would use; a file that\n"
      "'vornixpath snapshot' wrote; or folders, as for --path. './now' is a file or folder called now.\n"
      "Told are folders added (+), moved (~) and refreshed (*: they hold something else) in their new order, then "
      "those\n"
      "removed (-); on a terminal both paths beside each other.\n"
      "Exit status: 0 the same, 1 different, 2 wrong usage, 3 see --strict, 4 could not work.\n\n"
      "  vornixpath compare monday.snapshot now --effects\n"
      "  vornixpath compare saved ~/toolbox:~/more --deep");
  return {&command, [options](const Positionals& positionals) {
            std::tie(options->before, options->after) = positionals.ExactlyTwo("OLD", "NEW");
            RefuseImpossiblePath(options->path);
            RefuseEmptySession(options->session);
            RefuseIdleOptions(*options);
            return *options;
          }};
}

}  // namespace vornixpath
