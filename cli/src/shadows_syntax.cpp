#include "command_syntax.hpp"
#include "joined_names.hpp"
#include "usage_error.hpp"

namespace vornixpath {

namespace {

struct TypedOptions {
  ShadowsOptions shadows;
  std::optional<std::string> failOn;
};

ShadowGrade GradeFromArgument(const std::string& name) {
  if (const auto grade = ShadowGradeFrom(name)) return *grade;
  throw UsageError("there is no grade \"" + Displayed(name) + "\", only " + JoinedNames(kShadowGradeNames, ", ", ", "));
}

void RefuseEmptyFile(const std::optional<std::string>& file, const std::string& option) {
  if (file && file->empty()) throw UsageError("the FILE of " + option + " is empty");
}

ShadowsOptions Completed(const TypedOptions& typed, const Positionals& positionals) {
  positionals.RequireNone();
  ShadowsOptions options = typed.shadows;
  RefuseImpossiblePath(options.path);
  RefuseEmptyFile(options.baseline, "--baseline");
  RefuseEmptyFile(options.newBaseline, "--write-baseline");
  if (typed.failOn) options.failOn = GradeFromArgument(*typed.failOn);
  return options;
}

}  // namespace

CommandSyntax AddShadows(CLI::App& app) {
  const auto typed = std::make_shared<TypedOptions>();
  ShadowsOptions& options = typed->shadows;
  CLI::App& command = AddCommand(app, "shadows", "", "List what is hidden on the path, and how grave that is");
  AddPathOptions(command, options.path);
  AddMaskOption(command, options.path);
  AddCacheOptions(command, options.path);
  AddExtensionOption(command, options.extensions);
  command.add_flag("--strict", options.strict, "End with 3 when a folder or a file could not be read");
  command.add_option("--fail-on", typed->failOn, "End with 1 when something of that grade or a graver one\nis hidden")
      ->type_name(OneOf(kShadowGradeNames));
  command
      .add_option("--baseline", options.baseline,
                  "Leave out what FILE holds: the same name of the same\n"
                  "two folders, the same file hidden, the same grade")
      ->type_name("FILE");
  command.add_option("--write-baseline", options.newBaseline, "Write everything that is hidden now to FILE")
      ->type_name("FILE");
  AddJsonFlag(command, options.json);
  command.footer(
      "Grades, from harmless to grave:\n"
      "  same-file    one file under two names: a link\n"
      "  identical    files of equal content\n"
      "  different    files of different content, or one could not be read\n"
      "  letter-case  names that differ in letter case only: found each on its own here, but not everywhere\n"
      "  kind         a plain file, and a class or package of its name\n"
      "Both baselines together: one is read, then all that is hidden is written.\n"
      "Exit status: 0 listed, 1 see --fail-on, 2 wrong usage, 3 see --strict, 4 could not work.\n\n"
      "  vornixpath shadows --path ~/toolbox:~/more\n"
      "  vornixpath shadows --write-baseline shadows.txt\n"
      "  vornixpath shadows --baseline shadows.txt --fail-on different");
  return {&command, [typed](const Positionals& positionals) { return Completed(*typed, positionals); }};
}

}  // namespace vornixpath
