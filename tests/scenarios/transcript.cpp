#include "transcript.hpp"

#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>
#include <stdexcept>

namespace transcripts {

namespace fs = std::filesystem;

namespace {

bool BeginsWith(const std::string& text, const std::string& beginning) { return text.rfind(beginning, 0) == 0; }

void Replace(std::string& text, const std::string& from, const std::string& to) {
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
}

std::string ContentOf(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

// Standard output as it is, standard error marked; an unfinished last line is finished.
std::string Marked(const std::string& text, const std::string& mark) {
  std::istringstream in(text);
  std::string marked;
  for (std::string line; std::getline(in, line);) marked += mark + line + '\n';
  return marked;
}

}  // namespace

Transcript ReadTranscript(const fs::path& file) {
  std::ifstream in(file);
  if (!in) throw std::runtime_error("cannot read " + file.string());

  Transcript transcript;
  bool inTree = false;
  bool inStep = false;
  for (std::string line; std::getline(in, line);) {
    if (inStep) {
      transcript.steps.back().expected += line + '\n';
      inStep = !BeginsWith(line, "= ");
    } else if (line == "tree") {
      inTree = true;
    } else if (inTree && BeginsWith(line, "  ")) {
      transcript.tree.push_back(line.substr(2));
    } else if (BeginsWith(line, "$ ")) {
      transcript.steps.push_back({line.substr(2), ""});
      inTree = false;
      inStep = true;
    } else if (!line.empty() && line.front() != '#') {
      throw std::runtime_error(file.string() + " has a line that belongs nowhere: " + line);
    }
  }
  if (inStep || transcript.steps.empty()) throw std::runtime_error(file.string() + " does not end in a status line");
  return transcript;
}

void MakeTree(const std::vector<std::string>& tree, const fs::path& root) {
  for (const std::string& line : tree) {
    const std::size_t arrow = line.find(" -> ");
    const fs::path place = root / line.substr(0, arrow);
    if (arrow != std::string::npos) {
      fs::create_directories(place.parent_path());
      fs::create_symlink(line.substr(arrow + 4), place);
    } else if (line.back() == '/') {
      fs::create_directories(place);
    } else {
      fs::create_directories(place.parent_path());
      std::ofstream(place) << line << '\n';
    }
  }
}

std::string RunCommand(const std::string& command, const fs::path& root) {
  const fs::path work = root.parent_path();
  const fs::path state = work / "state";
  std::ofstream(work / "command")
      << "cd " << root << "\nPATH=" << PROGRAM_FOLDER << ":$PATH\nTOOLBOX=" << TOOLBOX << "\nHOME=" << work / "home"
      << "\nXDG_STATE_HOME=" << state
      << "\nLC_ALL=C\nexport TOOLBOX HOME XDG_STATE_HOME LC_ALL\nunset VORNIX_PATH XDG_CACHE_HOME\n"
      << command << '\n';
  const std::string quoted = '"' + work.string();
  const int status = std::system(  // NOLINT(cert-env33-c,concurrency-mt-unsafe): a shell is what transcripts are about
      ("sh " + quoted + "/command\" >" + quoted + "/out\" 2>" + quoted + "/err\"").c_str());
  if (!WIFEXITED(status)) throw std::runtime_error("the command was ended by a signal: " + command);

  std::string printed = Marked(ContentOf(work / "out"), "") + Marked(ContentOf(work / "err"), "! ") + "= " +
                        std::to_string(WEXITSTATUS(status)) + '\n';
  Replace(printed, root.string(), "ROOT");
  Replace(printed, state.string(), "STATE");
  Replace(printed, TOOLBOX, "TOOLBOX");
  printed = std::regex_replace(printed, std::regex("[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}Z"), "TIME");
  return std::regex_replace(printed, std::regex("(, |\"bytes\":)[0-9]+( bytes\\b|,)"), "$1SIZE$2");
}

}  // namespace transcripts
