// The commands that ask about a path.

#include "command_syntax.hpp"
#include "joined_names.hpp"
#include "scope_name.hpp"
#include "usage_error.hpp"

namespace vornixpath {

namespace {

void AddFromOption(CLI::App& command, std::optional<std::string>& from) {
  command
      .add_option("--from", from,
                  "Ask as code in FOLDER would: its private folder\n"
                  "comes first")
      ->type_name("FOLDER");
}

WhichOptions Completed(WhichOptions options, const Positionals& positionals) {
  options.names = positionals.AtLeastOne("NAME");
  RefuseImpossiblePath(options.path);
  RefuseImpossiblePackages(options.path);
  RefuseTwoForms(options.json, options.form);
  for (const std::string& name : options.names) {
    if (name.empty()) throw UsageError("a NAME is empty");
  }
  return options;
}

WhyOptions Completed(WhyOptions options, const Positionals& positionals) {
  options.name = positionals.ExactlyOne("NAME");
  RefuseImpossiblePath(options.path);
  if (options.name.empty()) throw UsageError("NAME is empty");
  return options;
}

MatchOptions Completed(MatchOptions options, const Positionals& positionals) {
  options.partial = positionals.ExactlyOne("PARTIAL");
  RefuseImpossiblePath(options.path);
  RefuseTwoForms(options.json, options.form);
  if (options.partial.empty()) throw UsageError("PARTIAL is empty");
  return options;
}

FilesOptions Completed(FilesOptions options, const Positionals& positionals) {
  options.extensions = positionals.AtLeastOne(".EXT");
  RefuseImpossiblePath(options.path);
  RefuseTwoForms(options.json, options.form);
  return options;
}

PathListOptions Completed(PathListOptions options, const Positionals& positionals) {
  positionals.RequireNone();
  RefuseImpossiblePath(options.path);
  RefuseImpossiblePackages(options.path);
  RefuseTwoForms(options.json, options.form);
  return options;
}

}  // namespace

CommandSyntax AddWhich(CLI::App& app) {
  const auto options = std::make_shared<WhichOptions>();
  CLI::App& command = AddCommand(app, "which", "NAME...", "Tell which file each NAME means on the path");
  AddPathOptions(command, options->path);
  AddSnapshotOption(command, options->path);
  AddPackagesOption(command, options->path);
  AddMaskOption(command, options->path);
  AddCacheOptions(command, options->path);
  AddFromOption(command, options->from);
  AddExtensionOption(command, options->extensions, ". An extension in NAME wins");
  command.add_flag("--all", options->all, "List the winner and everything it hides");
  command.add_flag("--ignore-case", options->ignoreCase, "Let letter case make no difference to file names");
  AddUnreadableIsFailureFlag(command, options->strict);
  AddJsonFlag(command, options->json);
  AddNulFlag(command, options->form);
  command.footer(
      "NAME is a plain name (greet), one with its extension (greet.vnx), or a partial pathname (pkg/greet).\n"
      "Exit status: 0 all found, 1 one was not, 2 wrong usage, 3 see --strict, 4 could not work.\n\n"
      "  vornixpath which greet --path ~/toolbox:~/more\n"
      "  vornixpath which greet --mask ~/toolbox\n"
      "  vornixpath which greet --snapshot monday.snapshot\n"
      "  vornixpath which stdio --ext .h --path /usr/include");
  return {&command, [options](const Positionals& positionals) { return Completed(*options, positionals); }};
}

CommandSyntax AddWhy(CLI::App& app) {
  const auto options = std::make_shared<WhyOptions>();
  CLI::App& command = AddCommand(app, "why", "NAME", "Tell step by step why NAME means the file it means");
  AddPathOptions(command, options->path);
  AddSnapshotOption(command, options->path);
  AddMaskOption(command, options->path);
  AddCacheOptions(command, options->path);
  AddFromOption(command, options->from);
  AddExtensionOption(command, options->extensions, ". An extension in NAME wins");
  command.add_flag("--ignore-case", options->ignoreCase, "Let letter case make no difference to file names");
  AddUnreadableIsFailureFlag(command, options->strict);
  AddJsonFlag(command, options->json);
  command.footer(
      "The answer is that of 'vornixpath which NAME'. Folders are numbered as they stand on the path, from 1.\n"
      "When NAME means nothing, plain subfolders of the path's folders are looked into, too, but not those of a\n"
      "snapshot.\n"
      "Exit status: 0 found, 1 not found, 2 wrong usage, 3 see --strict, 4 could not work.\n\n"
      "  vornixpath why greet --path ~/toolbox:~/more");
  return {&command, [options](const Positionals& positionals) { return Completed(*options, positionals); }};
}

CommandSyntax AddMatch(CLI::App& app) {
  const auto options = std::make_shared<MatchOptions>();
  CLI::App& command =
      AddCommand(app, "match", "PARTIAL", "List the folders of the path that a partial pathname matches");
  AddPathOptions(command, options->path);
  AddSnapshotOption(command, options->path);
  AddMaskOption(command, options->path);
  AddCacheOptions(command, options->path);
  command.add_flag("--ignore-case", options->ignoreCase, "Let letter case make no difference to folder names");
  command.add_flag("--strict", options->strict,
                   "Let no mark '+' and no enclosing special folder be\n"
                   "left out, and letter case count in packages, classes\n"
                   "and the private folder, also under --ignore-case");
  AddJsonFlag(command, options->json);
  AddNulFlag(command, options->form);
  command.footer(
      "PARTIAL is made of folder names: pkg/Cls matches +pkg/@Cls. One that begins with '/' is a whole path.\n"
      "Exit status: 0 something matches, 1 nothing does, 2 wrong usage, 4 could not work.\n\n"
      "  vornixpath match geometry/Point --path ~/toolbox");
  return {&command, [options](const Positionals& positionals) { return Completed(*options, positionals); }};
}

CommandSyntax AddFiles(CLI::App& app) {
  const auto options = std::make_shared<FilesOptions>();
  CLI::App& command =
      AddCommand(app, "files", ".EXT...", "List all files with one of the extensions, whether hidden or not");
  AddPathOptions(command, options->path);
  AddSnapshotOption(command, options->path);
  AddMaskOption(command, options->path);
  AddCacheOptions(command, options->path);
  command
      .add_option("--scope", options->scope,
                  "The folders to look into: the plain ones (main), all\n"
                  "but resources (visible), all, or those of one kind")
      ->type_name(OneOf(ScopeNames()))
      ->check(CLI::IsMember(ScopeNames()).description(""))
      ->capture_default_str();
  command.add_flag("--ignore-case", options->ignoreCase, "Let letter case make no difference to extensions");
  AddUnreadableIsFailureFlag(command, options->strict);
  AddJsonFlag(command, options->json);
  AddNulFlag(command, options->form);
  command.footer(
      "A file's extension begins at its last dot, unless that is its first character; '' lists files without one.\n"
      "Files come in the order of the path, those of one folder by name.\n"
      "Exit status: 0 some listed, 1 there are none, 2 wrong usage, 3 see --strict, 4 could not work.\n\n"
      "  vornixpath files .vnx --path ~/toolbox\n"
      "  vornixpath files .h .hpp --scope main --path /usr/include");
  return {&command, [options](const Positionals& positionals) { return Completed(*options, positionals); }};
}

CommandSyntax AddPath(CLI::App& app) {
  const auto options = std::make_shared<PathListOptions>();
  CLI::App& command = AddCommand(app, "path", "", "List the folders of the path, and which are there");
  AddPathOptions(command, options->path);
  AddPackagesOption(command, options->path);
  command.add_flag("--dedup", options->onlyDistinct,
                   "List each folder once, under its first spelling, and\n"
                   "tell of each that is left out which one stays and why");
  AddJsonFlag(command, options->json);
  AddNulFlag(command, options->form);
  command.footer(
      "A folder is present, missing, unreadable, or repeated: it stands further up already, if perhaps in another\n"
      "spelling. -0 leaves that out.\n"
      "Exit status: 0 listed, 2 wrong usage, 4 could not work.\n\n"
      "  vornixpath path\n"
      "  vornixpath path --dedup\n"
      "  vornixpath path --session ~/project.path");
  return {&command, [options](const Positionals& positionals) { return Completed(*options, positionals); }};
}

}  // namespace vornixpath
