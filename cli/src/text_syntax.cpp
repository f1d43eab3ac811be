// The commands that take texts apart and ask about no path.

#include "command_syntax.hpp"

namespace vornixpath {

CommandSyntax AddSplit(CLI::App& app) {
  const auto options = std::make_shared<SplitOptions>();
  CLI::App& command = AddCommand(app, "split", "TEXT", "Split a path string into its folders");
  AddNulFlag(command, options->form);
  command.footer("  vornixpath split '/a:/b;/c'");
  return {&command, [options](const Positionals& positionals) {
            options->text = positionals.ExactlyOne("TEXT");
            return *options;
          }};
}

CommandSyntax AddIri(CLI::App& app) {
  const auto options = std::make_shared<IriOptions>();
  CLI::App& command = AddCommand(app, "iri", "TEXT", "Turn a folder text into its identifier, or back");
  command.add_flag("--back", options->back, "TEXT is an identifier: write the text that people use for it");
  AddNulFlag(command, options->form);
  command.footer(
      "TEXT is taken as it stands: a relative one gives a relative identifier.\n\n"
      "  vornixpath iri '/a b/../c'\n"
      "  vornixpath iri --back file:///c");
  return {&command, [options](const Positionals& positionals) {
            options->text = positionals.ExactlyOne("TEXT");
            return *options;
          }};
}

}  // namespace vornixpath
