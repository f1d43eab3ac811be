// The installed packages, asked for by themselves or to be searched after the path.

#include "command_syntax.hpp"
#include "usage_error.hpp"

namespace vornixpath {

namespace {

struct TypedPackages {
  std::optional<std::string> folder;
  PackagesOptions options;
};

PackagesOptions Completed(const TypedPackages& typed, const Positionals& positionals) {
  PackagesOptions options = typed.options;
  if (typed.folder && !positionals.IsEmpty()) throw UsageError("FOLDER and --packages exclude each other");
  options.folder = typed.folder ? *typed.folder : positionals.ExactlyOne("FOLDER");
  if (options.folder.empty()) throw UsageError("FOLDER is empty");
  return options;
}

}  // namespace

void AddPackagesOption(CLI::App& command, PathOptions& path) {
  command
      .add_option("--packages", path.packages,
                  "Search the folders of the packages whose manifests\n"
                  "stand in FOLDER, too, after those of the path")
      ->type_name("FOLDER");
}

void RefuseImpossiblePackages(const PathOptions& path) {
  if (path.snapshot && path.packages) throw UsageError("--snapshot and --packages exclude each other");
  if (path.packages && path.packages->empty()) throw UsageError("the FOLDER of --packages is empty");
}

CommandSyntax AddPackages(CLI::App& app) {
  const auto typed = std::make_shared<TypedPackages>();
  CLI::App& command =
      AddCommand(app, "packages", "FOLDER", "Tell what each package of a folder of manifests puts on the path");
  command.add_option("--packages", typed->folder, "The same as FOLDER")->type_name("FOLDER");
  command.add_flag("--strict", typed->options.strict,
                   "End with 3 when it cannot be told of a package what\n"
                   "it adds");
  AddJsonFlag(command, typed->options.json);
  command.footer(
      "Each manifest *.json of FOLDER, in order of its name: the package adds folders, which follow; it adds nothing, "
      "as\n"
      "it is disabled, has none (empty), or is a root-folder package not marked as manually installed (unmarked); or "
      "it\n"
      "cannot be told, as that mark is no boolean (unclear) or there is something wrong with the manifest (refused).\n"
      "Exit status: 0 listed, 2 wrong usage, 3 see --strict, 4 could not work.\n\n"
      "  vornixpath packages /opt/packages\n"
      "  vornixpath which greet --path ~/toolbox --packages /opt/packages");
  return {&command, [typed](const Positionals& positionals) { return Completed(*typed, positionals); }};
}

}  // namespace vornixpath
