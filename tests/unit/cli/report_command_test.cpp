#include <gmock/gmock.h>

#include <fakes/failing_storage_provider.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <search_path_environment/whole_file.hpp>
#include <unit/environment/memory_storage.hpp>

#include "commands.hpp"
#include "report_file.hpp"

namespace vornixpath {
namespace {

using foundation::storage::fakes::FailingStorageProvider;
using foundation::storage::fakes::Persistence;
using foundation::storage::fakes::StorageOperation;
using Quorvex::PathEnvironment::InMemory;
using Quorvex::PathEnvironment::MemoryStorage;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const std::string kPage = "memory:///pages/path.html";
const std::string kFolders = "memory:///state/folders";

std::chrono::steady_clock::time_point StandingStill() { return {}; }

/// What the command said and did, over a path of its own.
class Reporting {
 public:
  Reporting(MemoryStorage& storage, const std::vector<std::string>& folders) : storage_(storage) {
    std::string lines;
    for (const std::string& folder : folders) lines += folder + '\n';
    storage_.GetProvider().AddFile(u"/state/folders", lines);
    storage_.WithFolders({u"/pages"});
    options_.file = kPage;
    options_.path.file = kFolders;
    options_.path.cache = CacheUse::Off;
  }

  ReportOptions& Options() { return options_; }

  ExitStatus Run() {
    testing::internal::CaptureStderr();
    try {
      const ExitStatus status = RunReport(options_, StandingStill);
      messages_ = testing::internal::GetCapturedStderr();
      return status;
    } catch (const std::exception& failure) {
      messages_ = testing::internal::GetCapturedStderr() + failure.what();
      return ExitStatus::CouldNotWork;
    }
  }

  [[nodiscard]] std::string Page() const {
    return Quorvex::PathEnvironment::ReadWholeFile(storage_.GetProvider(), InMemory(u"/pages/path.html")).value_or("");
  }
  [[nodiscard]] const std::string& Messages() const { return messages_; }

 private:
  MemoryStorage& storage_;
  ReportOptions options_;
  std::string messages_;
};

std::size_t CountOf(const std::string& part, const std::string& text) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

TEST(Report, IsAWholePageThatBearsItsMark) {
  MemoryStorage storage = std::move(MemoryStorage().WithFiles({u"/a/f.vnx"}));
  Reporting reporting(storage, {"memory:///a"});

  EXPECT_EQ(reporting.Run(), ExitStatus::Yes);

  EXPECT_THAT(reporting.Page(), StartsWith(std::string(kReportBeginning)));
  EXPECT_THAT(reporting.Page(), EndsWith("</html>\n"));
}

TEST(Report, IsTheSameBytesForTheSameDiskHoweverThatListsItsFiles) {
  const std::vector<std::u16string> files = {u"/a/f.vnx", u"/a/g.vnx", u"/a/+p/h.vnx", u"/b/f.vnx", u"/b/@K/K.vnx"};
  const auto pageOf = [](const std::vector<std::u16string>& inOrder) {
    MemoryStorage storage = std::move(MemoryStorage().WithFiles(inOrder));
    Reporting reporting(storage, {"memory:///a", "memory:///b", "memory:///none"});
    EXPECT_EQ(reporting.Run(), ExitStatus::Yes);
    EXPECT_EQ(CountOf("class=\"rung", reporting.Page()), 3);
    return reporting.Page();
  };

  EXPECT_EQ(pageOf(files), pageOf({files.rbegin(), files.rend()}));
}

TEST(Report, TakesNothingOnDiskForHtml) {
  const std::u16string name = u"<script>alert('1')<" + fl::filesystem::from_bytes("\xFF") + u"&\"\u001B.vnx";
  MemoryStorage storage = std::move(MemoryStorage().WithFiles({u"/<b>/" + name, u"/<i>/" + name}));
  Reporting reporting(storage, {"memory:///<b>", "memory:///<i>", "memory:///<u>"});

  ASSERT_EQ(reporting.Run(), ExitStatus::Yes) << reporting.Messages();

  const std::string page = reporting.Page();
  EXPECT_THAT(page, HasSubstr("&lt;script&gt;alert(&#39;1&#39;)&lt;\\xFF&amp;&quot;\\u{1B}"));
  EXPECT_EQ(CountOf("<script", page), 1);
  for (const char* tag : {"<b>/", "<i>", "<u>", "\xFF", "\x1B"}) EXPECT_THAT(page, Not(HasSubstr(tag)));
}

TEST(Report, AsksNothingOfAnyNetwork) {
  MemoryStorage storage = std::move(MemoryStorage().WithFiles({u"/a/f.vnx", u"/b/f.vnx"}));
  Reporting reporting(storage, {"memory:///a", "memory:///b"});
  ASSERT_EQ(reporting.Run(), ExitStatus::Yes);

  const std::string page = reporting.Page();
  EXPECT_THAT(page, HasSubstr("default-src 'none'"));
  EXPECT_THAT(page, Not(HasSubstr("unsafe")));
  for (const char* way : {"http:", "https:", " src=", "url(", "@import", " style=", " onclick="}) {
    EXPECT_THAT(page, Not(HasSubstr(way)));
  }
}

TEST(Report, LooksForTheExtensionsThatAreGiven) {
  MemoryStorage storage = std::move(MemoryStorage().WithFiles({u"/a/f.vnx", u"/a/g.h"}));
  Reporting reporting(storage, {"memory:///a"});
  reporting.Options().extensions = "h";

  ASSERT_EQ(reporting.Run(), ExitStatus::Yes);

  EXPECT_THAT(reporting.Page(), HasSubstr("<td>g.h</td>"));
  EXPECT_THAT(reporting.Page(), Not(HasSubstr("f.vnx")));
}

TEST(Report, OfAPathWithoutFoldersIsAPage) {
  MemoryStorage storage;
  Reporting reporting(storage, {});

  EXPECT_EQ(reporting.Run(), ExitStatus::Yes);

  EXPECT_THAT(reporting.Page(), HasSubstr("Nothing on this path is hidden."));
  EXPECT_THAT(reporting.Page(), EndsWith("</html>\n"));
}

TEST(Report, IsStrictAboutAFolderThatCannotBeReadAndWrittenAllTheSame) {
  MemoryStorage storage = std::move(MemoryStorage().WithFiles({u"/a/f.vnx", u"/b/f.vnx"}));
  Reporting reporting(storage, {"memory:///a", "memory:///b"});
  storage.Through<FailingStorageProvider>()->Plan({.operation = StorageOperation::List,
                                                   .location = InMemory(u"/b"),
                                                   .error = std::make_error_code(std::errc::permission_denied),
                                                   .persistence = Persistence::Persistent});

  EXPECT_EQ(reporting.Run(), ExitStatus::Yes);
  EXPECT_THAT(reporting.Messages(), HasSubstr("\"memory:///b\", folder 2 of the path: it cannot be read"));
  EXPECT_THAT(reporting.Page(), HasSubstr("class=\"rung unreadable\" id=\"f2\""));

  reporting.Options().strict = true;
  EXPECT_EQ(reporting.Run(), ExitStatus::Incomplete);
}

TEST(Report, IsStrictAboutAFileThatCannotBeCompared) {
  MemoryStorage storage = std::move(MemoryStorage().WithFiles({u"/a/f.vnx", u"/b/f.vnx"}));
  Reporting reporting(storage, {"memory:///a", "memory:///b"});
  reporting.Options().strict = true;
  storage.Through<FailingStorageProvider>()->Plan({.operation = StorageOperation::Stat,
                                                   .location = InMemory(u"/b/f.vnx"),
                                                   .error = std::make_error_code(std::errc::permission_denied),
                                                   .persistence = Persistence::Persistent});

  EXPECT_EQ(reporting.Run(), ExitStatus::Incomplete);
  EXPECT_THAT(reporting.Messages(), HasSubstr("cannot examine \"memory:///b/f.vnx\": Permission denied"));
  EXPECT_THAT(reporting.Page(), HasSubstr("(cannot examine &quot;memory:///b/f.vnx&quot;: Permission denied)"));
}

TEST(Report, TellsNothingOfAMaskedFolderButThatItIsOne) {
  MemoryStorage storage = std::move(MemoryStorage().WithFiles({u"/a/f.vnx", u"/b/f.vnx"}));
  Reporting reporting(storage, {"memory:///a", "memory:///b"});
  reporting.Options().path.masks = {"memory:///a"};

  EXPECT_EQ(reporting.Run(), ExitStatus::Yes);

  EXPECT_THAT(reporting.Page(), HasSubstr("class=\"rung masked\" id=\"f1\""));
  EXPECT_THAT(reporting.Page(), HasSubstr("Nothing on this path is hidden."));
  EXPECT_EQ(CountOf("memory:///a", reporting.Page()), 1);
}

TEST(Report, TakesThePlaceOfAnOlderOneAndOfAnEmptyFile) {
  MemoryStorage storage = std::move(MemoryStorage().WithFiles({u"/a/f.vnx", u"/pages/path.html"}));
  Reporting reporting(storage, {"memory:///a"});

  EXPECT_EQ(reporting.Run(), ExitStatus::Yes);
  storage.WithFiles({u"/a/newer.vnx"});
  EXPECT_EQ(reporting.Run(), ExitStatus::Yes);

  EXPECT_THAT(reporting.Page(), HasSubstr("newer.vnx"));
}

TEST(Report, TakesThePlaceOfNothingElse) {
  MemoryStorage storage = std::move(MemoryStorage().WithFiles({u"/a/f.vnx"}));
  storage.GetProvider().AddFile(u"/pages/path.html", "<!DOCTYPE html>\n<p>Somebody's page</p>\n");
  Reporting reporting(storage, {"memory:///a"});

  EXPECT_EQ(reporting.Run(), ExitStatus::CouldNotWork);

  EXPECT_THAT(reporting.Messages(), HasSubstr("cannot replace \"memory:///pages/path.html\": it is no report"));
  EXPECT_THAT(reporting.Page(), HasSubstr("Somebody's page"));
}

}  // namespace
}  // namespace vornixpath
