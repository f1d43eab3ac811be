#include "command_line.hpp"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <fl/filesystem/displayed_text.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <iostream>

#include "usage_error.hpp"

namespace vornixpath {

namespace {

std::string Displayed(const std::string& bytes) {
  return fl::filesystem::to_displayed_text(fl::filesystem::from_bytes(bytes));
}

// CLI11 takes a positional apart at commas and reads on after "--", so positionals are collected here instead.
class Positionals {
 public:
  Positionals(const CLI::App& command, const std::vector<std::string>& afterDoubleDash) : texts_(command.remaining()) {
    const auto option = std::find_if(texts_.begin(), texts_.end(),
                                     [](const std::string& text) { return text.size() > 1 && text.front() == '-'; });
    if (option != texts_.end()) throw UsageError("there is no option \"" + Displayed(*option) + "\"");
    texts_.insert(texts_.end(), afterDoubleDash.begin(), afterDoubleDash.end());
  }

  std::vector<std::string> AtLeastOne(const std::string& name) const {
    if (texts_.empty()) throw UsageError(name + " is missing");
    return texts_;
  }

  std::string ExactlyOne(const std::string& name) const {
    if (texts_.empty()) throw UsageError(name + " is missing");
    if (texts_.size() > 1)
      throw UsageError("only one " + name + " is taken, not also \"" + Displayed(texts_[1]) + "\"");
    return texts_.front();
  }

 private:
  std::vector<std::string> texts_;
};

// Positionals are not known to CLI11, so its usage line has to be told.
class HelpWithPositional : public CLI::Formatter {
 public:
  explicit HelpWithPositional(std::string positional) : positional_(std::move(positional)) {}

  std::string make_usage(const CLI::App* /*command*/, std::string name) const override {
    return "Usage: " + name + " " + positional_ + " [OPTIONS]\n";
  }

 private:
  std::string positional_;
};

void AddNulFlag(CLI::App& command, OutputForm& form) {
  command.add_flag_callback(
      "-0,--null", [&form] { form = OutputForm::NulTerminated; }, "Write exact bytes, each result ended by a NUL");
}

void AddPathOptions(CLI::App& command, PathOptions& path) {
  command
      .add_option("--path", path.text,
                  "The folders to search, separated by ':' or ';';\n"
                  "relative ones are taken against the current folder.\n"
                  "Without it, the variable VORNIX_PATH")
      ->type_name("FOLDERS");
  command
      .add_option("--path-file", path.file,
                  "A file that names the folders, one a line: absolute,\n"
                  "relative to that file, or an identifier")
      ->type_name("FILE");
}

void AddFromOption(CLI::App& command, std::optional<std::string>& from) {
  command
      .add_option("--from", from,
                  "Ask as code in FOLDER would: its private folder\n"
                  "comes first")
      ->type_name("FOLDER");
}

void AddExtensionOption(CLI::App& command, std::string& extensions) {
  command
      .add_option("--ext", extensions,
                  "The extensions to try, in order, separated by commas;\n"
                  "'' for none. An extension in NAME wins")
      ->type_name(".A,.B")
      ->capture_default_str();
}

CLI::App* AddCommand(CLI::App& app, const std::string& name, const std::string& positional,
                     const std::string& description) {
  CLI::App* const command = app.add_subcommand(name, description)->group("Commands");
  command->formatter(std::make_shared<HelpWithPositional>(positional));
  return command->allow_extras();
}

CLI::App* AddWhich(CLI::App& app, WhichOptions& options) {
  CLI::App* const command = AddCommand(app, "which", "NAME...", "Tell which file each NAME means on the path");
  AddPathOptions(*command, options.path);
  AddFromOption(*command, options.from);
  AddExtensionOption(*command, options.extensions);
  command->add_flag("--all", options.all, "List the winner and everything it hides");
  command->add_flag("--ignore-case", options.ignoreCase, "Let letter case make no difference to file names");
  command->add_flag("--strict", options.strict, "End with 3 when a folder could not be read");
  command->add_flag("--json", options.json, "Write one JSON document");
  AddNulFlag(*command, options.form);
  command->footer(
      "NAME is a plain name (greet), one with its extension (greet.vnx), or a partial pathname (pkg/greet).\n"
      "Exit status: 0 all found, 1 one was not, 2 wrong usage, 3 see --strict, 4 could not work.\n\n"
      "  vornixpath which greet --path ~/toolbox:~/more\n"
      "  vornixpath which stdio --ext .h --path /usr/include");
  return command;
}

CLI::App* AddWhy(CLI::App& app, WhyOptions& options) {
  CLI::App* const command = AddCommand(app, "why", "NAME", "Tell step by step why NAME means the file it means");
  AddPathOptions(*command, options.path);
  AddFromOption(*command, options.from);
  AddExtensionOption(*command, options.extensions);
  command->add_flag("--ignore-case", options.ignoreCase, "Let letter case make no difference to file names");
  command->add_flag("--strict", options.strict, "End with 3 when a folder could not be read");
  command->add_flag("--json", options.json, "Write one JSON document");
  command->footer(
      "The answer is that of 'vornixpath which NAME'. Folders are numbered as they stand on the path, from 1.\n"
      "When NAME means nothing, plain subfolders of the path's folders are looked into, too.\n"
      "Exit status: 0 found, 1 not found, 2 wrong usage, 3 see --strict, 4 could not work.\n\n"
      "  vornixpath why greet --path ~/toolbox:~/more");
  return command;
}

CLI::App* AddMatch(CLI::App& app, MatchOptions& options) {
  CLI::App* const command =
      AddCommand(app, "match", "PARTIAL", "List the folders of the path that a partial pathname matches");
  AddPathOptions(*command, options.path);
  command->add_flag("--ignore-case", options.ignoreCase, "Let letter case make no difference to folder names");
  command->add_flag("--strict", options.strict,
                    "Let no mark '+' and no enclosing special folder be\n"
                    "left out, and letter case count in packages, classes\n"
                    "and the private folder, also under --ignore-case");
  command->add_flag("--json", options.json, "Write one JSON document");
  AddNulFlag(*command, options.form);
  command->footer(
      "PARTIAL is made of folder names: pkg/Cls matches +pkg/@Cls. One that begins with '/' is a whole path.\n"
      "Exit status: 0 something matches, 1 nothing does, 2 wrong usage, 4 could not work.\n\n"
      "  vornixpath match geometry/Point --path ~/toolbox");
  return command;
}

CLI::App* AddSplit(CLI::App& app, SplitOptions& options) {
  CLI::App* const command = AddCommand(app, "split", "TEXT", "Split a path string into its folders");
  AddNulFlag(*command, options.form);
  command->footer("  vornixpath split '/a:/b;/c'");
  return command;
}

CLI::App* AddIri(CLI::App& app, IriOptions& options) {
  CLI::App* const command = AddCommand(app, "iri", "TEXT", "Turn a folder text into its identifier, or back");
  command->add_flag("--back", options.back, "TEXT is an identifier: write the text that people use for it");
  AddNulFlag(*command, options.form);
  command->footer(
      "TEXT is taken as it stands: a relative one gives a relative identifier.\n\n"
      "  vornixpath iri '/a b/../c'\n"
      "  vornixpath iri --back file:///c");
  return command;
}

void RequireCommand(const CLI::App& app, const std::vector<std::string>& options) {
  if (options.empty()) throw UsageError("COMMAND is missing");
  const std::string& first = options.front();
  if (!first.empty() && first.front() == '-') return;

  const auto isFirst = [&first](const CLI::App* command) { return command->get_name() == first; };
  if (app.get_subcommands(isFirst).empty()) throw UsageError("there is no command \"" + Displayed(first) + "\"");
}

void RefuseTwoPaths(const PathOptions& path) {
  if (path.text && path.file) throw UsageError("--path and --path-file exclude each other");
}

void RefuseTwoForms(bool json, OutputForm form) {
  if (json && form == OutputForm::NulTerminated) throw UsageError("--json and -0 exclude each other");
}

WhichOptions Completed(WhichOptions options, const Positionals& positionals) {
  options.names = positionals.AtLeastOne("NAME");
  RefuseTwoPaths(options.path);
  RefuseTwoForms(options.json, options.form);
  for (const std::string& name : options.names) {
    if (name.empty()) throw UsageError("a NAME is empty");
  }
  return options;
}

WhyOptions Completed(WhyOptions options, const Positionals& positionals) {
  options.name = positionals.ExactlyOne("NAME");
  RefuseTwoPaths(options.path);
  if (options.name.empty()) throw UsageError("NAME is empty");
  return options;
}

MatchOptions Completed(MatchOptions options, const Positionals& positionals) {
  options.partial = positionals.ExactlyOne("PARTIAL");
  RefuseTwoPaths(options.path);
  RefuseTwoForms(options.json, options.form);
  if (options.partial.empty()) throw UsageError("PARTIAL is empty");
  return options;
}

SplitOptions Completed(SplitOptions options, const Positionals& positionals) {
  options.text = positionals.ExactlyOne("TEXT");
  return options;
}

IriOptions Completed(IriOptions options, const Positionals& positionals) {
  options.text = positionals.ExactlyOne("TEXT");
  return options;
}

}  // namespace

std::variant<Command, ExitStatus> ParseCommandLine(const std::vector<std::string>& arguments) {
  const auto doubleDash = std::find(arguments.begin(), arguments.end(), "--");
  std::vector<std::string> options(arguments.begin(), doubleDash);
  const std::vector<std::string> verbatim(doubleDash == arguments.end() ? doubleDash : std::next(doubleDash),
                                          arguments.end());

  CLI::App app("Tells which file a name means on a search path, and why.", "vornixpath");
  app.set_version_flag("--version", "vornixpath " VORNIXPATH_VERSION);
  app.require_subcommand(1);
  app.get_formatter()->label("SUBCOMMAND", "COMMAND");
  app.footer("'vornixpath COMMAND --help' tells more. What follows '--' is never taken as an option.");

  WhichOptions which;
  WhyOptions why;
  MatchOptions match;
  SplitOptions split;
  IriOptions iri;
  const CLI::App* const whichCommand = AddWhich(app, which);
  const CLI::App* const whyCommand = AddWhy(app, why);
  const CLI::App* const matchCommand = AddMatch(app, match);
  const CLI::App* const splitCommand = AddSplit(app, split);
  const CLI::App* const iriCommand = AddIri(app, iri);

  RequireCommand(app, options);
  try {
    std::reverse(options.begin(), options.end());  // as CLI11 wants them
    app.parse(options);
  } catch (const CLI::Success& helpOrVersion) {
    app.exit(helpOrVersion, std::cout, std::cout);
    return ExitStatus::Yes;
  } catch (const CLI::ParseError& error) {
    throw UsageError(Displayed(error.what()));
  }

  if (whichCommand->parsed()) return Completed(which, Positionals(*whichCommand, verbatim));
  if (whyCommand->parsed()) return Completed(why, Positionals(*whyCommand, verbatim));
  if (matchCommand->parsed()) return Completed(match, Positionals(*matchCommand, verbatim));
  if (splitCommand->parsed()) return Completed(split, Positionals(*splitCommand, verbatim));
  return Completed(iri, Positionals(*iriCommand, verbatim));
}

}  // namespace vornixpath
