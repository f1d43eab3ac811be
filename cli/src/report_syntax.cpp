#include "command_syntax.hpp"
#include "usage_error.hpp"

namespace vornixpath {

namespace {

struct TypedReport {
  ReportOptions report;
  std::optional<std::string> file;
};

ReportOptions CompletedReport(const TypedReport& typed, const Positionals& positionals) {
  positionals.RequireNone();
  ReportOptions options = typed.report;
  RefuseImpossiblePath(options.path);
  RefuseImpossiblePackages(options.path);
  if (!typed.file) throw UsageError("--html FILE is missing: a report is a page in a file");
  if (typed.file->empty()) throw UsageError("the FILE of --html is empty");
  if (*typed.file == "-") throw UsageError("a report goes into a file; one named '-' is './-'");
  options.file = *typed.file;
  return options;
}

}  // namespace

CommandSyntax AddReport(CLI::App& app) {
  const auto typed = std::make_shared<TypedReport>();
  ReportOptions& options = typed->report;
  CLI::App& command = AddCommand(app, "report", "", "Write a page about the path, for a browser");
  options.path.cache = CacheUse::Off;  // what is told of reading is measured
  command.add_option("--html", typed->file, "The file that the page is written to")->type_name("FILE");
  AddPathOptions(command, options.path);
  AddPackagesOption(command, options.path);
  AddMaskOption(command, options.path);
  AddExtensionOption(command, options.extensions);
  command.add_flag("--strict", options.strict, "End with 3 when a folder or a file could not be read");
  command.footer(
      "The page tells the folders in order, what hides what, what 'vornixpath doctor' finds, which folders take\n"
      "longest to be read, and what each name means, with a box to search for one. It asks nothing of any network,\n"
      "and can be read without scripts. FILE#q=greet is the page with a search for greet.\n"
      "Only an older report, or an empty file, is replaced.\n"
      "Exit status: 0 written, 2 wrong usage, 3 written, but see --strict, 4 could not work.\n\n"
      "  vornixpath report --html path.html\n"
      "  vornixpath report --html path.html --path ~/toolbox:~/more");
  return {&command, [typed](const Positionals& positionals) { return CompletedReport(*typed, positionals); }};
}

}  // namespace vornixpath
