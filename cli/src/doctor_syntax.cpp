#include <charconv>

#include "command_syntax.hpp"
#include "usage_error.hpp"

namespace vornixpath {

namespace {

struct TypedDoctor {
  DoctorOptions doctor;
  std::optional<std::string> minScore;
};

int ScoreFromArgument(const std::string& text) {
  int score = 0;
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, score);
  if (error == std::errc() && rest == end && score >= 0 && score <= 100) return score;
  throw UsageError("--min-score is a number from 0 to 100, not \"" + Displayed(text) + "\"");
}

DoctorOptions Completed(const TypedDoctor& typed, const Positionals& positionals) {
  positionals.RequireNone();
  DoctorOptions options = typed.doctor;
  RefuseImpossiblePath(options.path);
  RefuseImpossiblePackages(options.path);
  if (typed.minScore) options.minScore = ScoreFromArgument(*typed.minScore);
  return options;
}

}  // namespace

CommandSyntax AddDoctor(CLI::App& app) {
  const auto typed = std::make_shared<TypedDoctor>();
  DoctorOptions& options = typed->doctor;
  CLI::App& command = AddCommand(app, "doctor", "", "Tell what is wrong with the path, and what can be done about it");
  AddPathOptions(command, options.path);
  AddPackagesOption(command, options.path);
  AddMaskOption(command, options.path);
  AddCacheOptions(command, options.path);
  AddExtensionOption(command, options.extensions);
  command.add_option("--min-score", typed->minScore, "End with 1 when the score is lower, and else with 0")
      ->type_name("N");
  command.add_flag("--strict", options.strict, "End with 3 when a folder or a file could not be read");
  AddJsonFlag(command, options.json);
  command.footer(
      "Errors: folders that are missing or cannot be read.\n"
      "Warnings: names that hide something different, classes in several folders, names that differ in letter case\n"
      "only.\n"
      "Notes: folders that are repeated, empty or lead back to themselves, packages in several folders, names that\n"
      "hide the same again, names that Windows forbids.\n"
      "The score is 100, less 10 for each error (60 at most), 3 for each warning (30 at most), 1 for each note (10 at\n"
      "most).\n"
      "Exit status: 0 neither errors nor warnings, 1 some, or see --min-score, 2 wrong usage, 3 see --strict, 4 could\n"
      "not work.\n\n"
      "  vornixpath doctor --path ~/toolbox:~/more\n"
      "  vornixpath doctor --min-score 80");
  return {&command, [typed](const Positionals& positionals) { return Completed(*typed, positionals); }};
}

}  // namespace vornixpath
