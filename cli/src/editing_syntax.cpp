// The commands that change the session's path, and tell how it was changed.

#include "command_syntax.hpp"
#include "usage_error.hpp"

namespace vornixpath {

namespace {

void AddEditOptions(CLI::App& command, EditOptions& options) {
  command.add_flag("--dry-run", options.isDryRun, "Write nothing; tell which folders would change, and\nwhich names");
  AddSessionOption(command, options.session);
}

EditOptions Completed(EditOptions options, const Positionals& positionals) {
  options.folders = positionals.AtLeastOne("FOLDER");
  RefuseEmptySession(options.session);
  return options;
}

}  // namespace

CommandSyntax AddAdd(CLI::App& app) {
  const auto options = std::make_shared<AddOptions>();
  const auto atBeginning = std::make_shared<bool>(false);
  CLI::App& command = AddCommand(app, "add", "FOLDER...", "Put each FOLDER onto the session's path");
  command.add_flag("--begin", *atBeginning, "Put them before all others, as happens anyway");
  command.add_flag("--end", options->atEnd, "Put them after all others");
  AddEditOptions(command, options->edit);
  command.footer(
      "They come in the order given; one that is on the path already moves. All or none: one that cannot be listed\n"
      "keeps the others off, too.\n"
      "Exit status: 0 done, 1 refused, 2 wrong usage, 4 could not work.\n\n"
      "  vornixpath add ~/toolbox ~/more\n"
      "  vornixpath add --end ~/later --dry-run");
  return {&command, [options, atBeginning](const Positionals& positionals) {
            if (*atBeginning && options->atEnd) throw UsageError("--begin and --end exclude each other");
            return AddOptions{Completed(options->edit, positionals), options->atEnd};
          }};
}

CommandSyntax AddRemove(CLI::App& app) {
  const auto options = std::make_shared<RemoveOptions>();
  CLI::App& command = AddCommand(app, "remove", "FOLDER...", "Take each FOLDER off the session's path");
  AddEditOptions(command, options->edit);
  command.footer(
      "FOLDER is spelled as on the path, or relative to the current folder; it need no longer exist. All or none: one\n"
      "that is not on the path keeps the others on it.\n"
      "Exit status: 0 done, 1 refused, 2 wrong usage, 4 could not work.\n\n"
      "  vornixpath remove ~/more");
  return {&command,
          [options](const Positionals& positionals) { return RemoveOptions{Completed(options->edit, positionals)}; }};
}

CommandSyntax AddUndo(CLI::App& app) {
  const auto options = std::make_shared<UndoOptions>();
  CLI::App& command = AddCommand(app, "undo", "", "Take back the last edit of the session's path");
  AddSessionOption(command, options->session);
  command.footer(
      "Once more takes back the edit before it, as far as edits are kept.\n"
      "Exit status: 0 done, 1 there is none, 2 wrong usage, 4 could not work.\n\n"
      "  vornixpath undo");
  return {&command, [options](const Positionals& positionals) {
            positionals.RequireNone();
            RefuseEmptySession(options->session);
            return *options;
          }};
}

CommandSyntax AddLog(CLI::App& app) {
  const auto options = std::make_shared<LogOptions>();
  CLI::App& command = AddCommand(app, "log", "", "List the edits of the session's path, the last one first");
  AddSessionOption(command, options->session);
  AddJsonFlag(command, options->json);
  command.footer(
      "Below each edit: + what it added, - what it removed, ~ what it moved. The last 20 are kept.\n"
      "Exit status: 0 listed, 2 wrong usage, 4 could not work.\n\n"
      "  vornixpath log");
  return {&command, [options](const Positionals& positionals) {
            positionals.RequireNone();
            RefuseEmptySession(options->session);
            return *options;
          }};
}

}  // namespace vornixpath
