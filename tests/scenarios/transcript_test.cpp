#include "transcript.hpp"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <stdexcept>

namespace transcripts {
namespace {

namespace fs = std::filesystem;

// A folder of its own for each transcript, gone afterwards.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (fs::canonical(fs::temp_directory_path()) / "transcript-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("cannot make " + name);
    path_ = name;
    fs::create_directory(path_ / "root");
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code ignored;  // what cannot be removed now is the system's to sweep
    fs::remove_all(path_, ignored);
  }

  fs::path Root() const { return path_ / "root"; }

 private:
  fs::path path_;
};

std::vector<std::string> AllTranscripts() {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(TRANSCRIPTS)) {
    if (entry.path().extension() == ".transcript") names.push_back(entry.path().stem().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

class CommandLine : public testing::TestWithParam<std::string> {};

TEST_P(CommandLine, BehavesAsTheTranscriptSays) {
  const Transcript transcript = ReadTranscript(fs::path(TRANSCRIPTS) / (GetParam() + ".transcript"));
  const TemporaryFolder folder;
  MakeTree(transcript.tree, folder.Root());

  for (const Step& step : transcript.steps) {
    SCOPED_TRACE(step.command);
    EXPECT_EQ(RunCommand(step.command, folder.Root()), step.expected);
  }
}

INSTANTIATE_TEST_SUITE_P(Transcripts, CommandLine, testing::ValuesIn(AllTranscripts()),
                         [](const auto& transcript) { return transcript.param; });

}  // namespace
}  // namespace transcripts
