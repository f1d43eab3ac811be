#include "command_syntax.hpp"

#include <algorithm>
#include <fl/filesystem/displayed_text.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <memory>
#include <utility>

#include "usage_error.hpp"

namespace vornixpath {

namespace {

// Positionals are not known to CLI11, so its usage line has to be told.
constexpr const char* kPositionalsLabel = "POSITIONALS OF VORNIXPATH";

class HelpWithPositionals : public CLI::Formatter {
 public:
  std::string make_usage(const CLI::App* command, std::string name) const override {
    const std::string positionals = PositionalsOf(*command);
    return "Usage: " + name + (positionals.empty() ? "" : " " + positionals) + " [OPTIONS]\n";
  }
};

}  // namespace

Positionals::Positionals(const CLI::App& command, const std::vector<std::string>& afterDoubleDash)
    : texts_(command.remaining()) {
  const auto option = std::find_if(texts_.begin(), texts_.end(),
                                   [](const std::string& text) { return text.size() > 1 && text.front() == '-'; });
  if (option != texts_.end()) throw UsageError("there is no option \"" + Displayed(*option) + "\"");
  texts_.insert(texts_.end(), afterDoubleDash.begin(), afterDoubleDash.end());
}

std::vector<std::string> Positionals::AtLeastOne(const std::string& name) const {
  if (texts_.empty()) throw UsageError(name + " is missing");
  return texts_;
}

std::string Positionals::ExactlyOne(const std::string& name) const {
  if (texts_.empty()) throw UsageError(name + " is missing");
  if (texts_.size() > 1) throw UsageError("only one " + name + " is taken, not also \"" + Displayed(texts_[1]) + "\"");
  return texts_.front();
}

std::pair<std::string, std::string> Positionals::ExactlyTwo(const std::string& first, const std::string& second) const {
  if (texts_.empty()) throw UsageError(first + " is missing");
  if (texts_.size() == 1) throw UsageError(second + " is missing");
  if (texts_.size() > 2) {
    throw UsageError("only " + first + " and " + second + " are taken, not also \"" + Displayed(texts_[2]) + "\"");
  }
  return {texts_[0], texts_[1]};
}

void Positionals::RequireNone() const {
  if (!texts_.empty()) throw UsageError("nothing but options is taken, not \"" + Displayed(texts_.front()) + "\"");
}

CLI::App& AddCommand(CLI::App& app, const std::string& name, const std::string& positionals,
                     const std::string& description) {
  CLI::App* const command = app.add_subcommand(name, description)->group("Commands");
  command->formatter(std::make_shared<HelpWithPositionals>());
  command->get_formatter()->label(kPositionalsLabel, positionals);
  return *command->allow_extras();
}

std::string PositionalsOf(const CLI::App& command) { return command.get_formatter()->get_label(kPositionalsLabel); }

void AddNulFlag(CLI::App& command, OutputForm& form) {
  command.add_flag_callback(
      "-0,--null", [&form] { form = OutputForm::NulTerminated; }, "Write exact bytes, each result ended by a NUL");
}

void AddJsonFlag(CLI::App& command, bool& json) { command.add_flag("--json", json, "Write one JSON document"); }

void AddSessionOption(CLI::App& command, std::optional<std::string>& session) {
  command
      .add_option("--session", session,
                  "The file that keeps the session's path. Without it,\n"
                  "$XDG_STATE_HOME/vornixpath/path, or\n"
                  "~/.local/state/vornixpath/path")
      ->type_name("FILE");
}

void AddMaskOption(CLI::App& command, PathOptions& path) {
  // A callback for each, because CLI11 takes the values of a list apart.
  command
      .add_option_function<std::string>(
          "--mask",
          [&path](const std::string& folder) {
            if (folder.empty()) throw UsageError("the FOLDER of --mask is empty");
            path.masks.push_back(folder);
          },
          "Answer as though FOLDER were not on the path, in\n"
          "whatever spelling; may be repeated")
      ->trigger_on_parse()
      ->type_name("FOLDER");
}

void RefuseTwoForms(bool json, OutputForm form) {
  if (json && form == OutputForm::NulTerminated) throw UsageError("--json and -0 exclude each other");
}

void RefuseEmptySession(const std::optional<std::string>& session) {
  if (session && session->empty()) throw UsageError("the FILE of --session is empty");
}

std::string Displayed(const std::string& bytes) {
  return fl::filesystem::to_displayed_text(fl::filesystem::from_bytes(bytes));
}

}  // namespace vornixpath
