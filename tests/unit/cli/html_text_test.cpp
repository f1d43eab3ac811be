#include "html_text.hpp"

#include <gmock/gmock.h>

#include <fl/filesystem/text_codec.hpp>
#include <unit/environment/memory_storage.hpp>

namespace vornixpath {
namespace {

using fl::filesystem::from_bytes;

TEST(HtmlText, IsTheTextWhereNothingHasAMeaningInHtml) { EXPECT_EQ(HtmlText("a-b_c (1) é"), "a-b_c (1) é"); }

TEST(HtmlText, LeavesNoTagInAName) {
  EXPECT_EQ(HtmlText(u"<script>alert(1)</script>"), "&lt;script&gt;alert(1)&lt;/script&gt;");
}

TEST(HtmlText, LeavesNoEndOfAnAttributeInAName) { EXPECT_EQ(HtmlText(u"\" onload='x'"), "&quot; onload=&#39;x&#39;"); }

TEST(HtmlText, LeavesNoReferenceInAName) { EXPECT_EQ(HtmlText(u"&lt;&amp;&#60;"), "&amp;lt;&amp;amp;&amp;#60;"); }

TEST(HtmlText, ShowsWhatATerminalWouldActOnAsElsewhere) {
  EXPECT_EQ(HtmlText(u"\u001B\n\u202E\\"), "\\u{1B}\\u{A}\\u{202E}\\\\");
}

TEST(HtmlText, ShowsStrayBytesAsElsewhere) { EXPECT_EQ(HtmlText(from_bytes("a\xFF<\xC3")), "a\\xFF&lt;\\xC3"); }

TEST(HtmlPath, LetsALineEndBeforeEachNameAndLeavesNoTagInOne) {
  EXPECT_EQ(HtmlPath(Quorvex::PathEnvironment::InMemory(u"/a&b/<c>")), "memory:///a&amp;b<wbr>/&lt;c&gt;");
}

}  // namespace
}  // namespace vornixpath
