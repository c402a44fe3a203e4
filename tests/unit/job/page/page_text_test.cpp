#include "job/page/page_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "job/job_error.h"
#include "job/tables/checksum.h"
#include "support/run_fixture.h"

namespace varnolix {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

TEST(ScriptSafeJson, NothingCanEndTheElement) {
    EXPECT_EQ(job::scriptSafeJson(R"({"a":"</script><!--&"})"), R"({"a":"\u003c/script\u003e\u003c!--\u0026"})");
    EXPECT_EQ(job::scriptSafeJson("\"a\xe2\x80\xa8z\xe2\x80\xa9\""), R"("a\u2028z\u2029")");
}

TEST(ScriptSafeJson, LeavesOtherTextsAlone) {
    EXPECT_EQ(job::scriptSafeJson("[1.5,\"\xc3\xa9\xe2\x80\xa6\",null]"), "[1.5,\"\xc3\xa9\xe2\x80\xa6\",null]");
    EXPECT_EQ(job::scriptSafeJson("\xe2\x80"), "\xe2\x80");
}

TEST(Sha256AsBase64, IsTheSumOfTheBytes) {
    EXPECT_EQ(job::sha256AsBase64("abc"), "ungWv48Bz+pBQUDeXa4iI7ADYaOWF3qctBD/YfIAFa0=");
}

class JoinedPageTest : public testing::FolderTest {
  protected:
    job::PageFiles files{folder(), folder() + "share"};

    std::string joined(const std::map<std::string, std::string>& marks = {}) const { return joinedPage(files, marks); }

    void writeLibrary(std::string_view text) const {
        std::filesystem::create_directories(folder() + "share/js");
        write("share/js/tool.js", text);
    }
};

TEST_F(JoinedPageTest, FilesTakeThePlaceOfTheirLines) {
    write("index.html", "<p>\n<link rel=\"stylesheet\" href=\"a.css\">\n<script src=\"b.js\"></script>\n</p>");
    write("a.css", "p { margin: 0 }\r\n");
    write("b.js", "run();");
    EXPECT_EQ(joined(), "<p>\n<style>p { margin: 0 }\n</style>\n<script>run();</script>\n</p>");
}

TEST_F(JoinedPageTest, ThePolicyNamesWhatWasPutIn) {
    write("index.html", "{{policy}}\n<link rel=\"stylesheet\" href=\"a.css\">\n<script src=\"b.js\"></script>\n");
    write("a.css", "p { margin: 0 }");
    write("b.js", "abc");
    const std::string page = joined();
    EXPECT_THAT(page, HasSubstr("script-src 'sha256-ungWv48Bz+pBQUDeXa4iI7ADYaOWF3qctBD/YfIAFa0='; style-src 'sha256-" +
                                job::sha256AsBase64("p { margin: 0 }") + "';"));
    EXPECT_TRUE(page.starts_with("default-src 'none'; "));
    EXPECT_THAT(page, Not(HasSubstr("unsafe")));
}

TEST_F(JoinedPageTest, MarksAreFilledOnce) {
    write("index.html", "<title>{{title}}</title>{{other}} {{data}} {{\n<script src=\"b.js\"></script>\n");
    write("b.js", "'{{title}}'");
    EXPECT_EQ(joined({{"title", "{{data}}"}, {"data", "{{title}}"}}),
              "<title>{{data}}</title>{{other}} {{title}} {{\n<script>'{{title}}'</script>\n");
}

TEST_F(JoinedPageTest, LibrariesMayBeMissing) {
    write("index.html", "<!-- MIT licence -->\n<script src=\"/usr/share/js/tool.js\"></script>\n");
    EXPECT_EQ(joined(), "<!-- MIT licence -->\n<!-- not installed: /usr/share/js/tool.js -->\n");
    writeLibrary("tool();");
    EXPECT_EQ(joined(), "<!-- MIT licence -->\n<script>tool();</script>\n");
    writeLibrary("const end = '</script>';");
    EXPECT_EQ(joined(), "<!-- MIT licence -->\n<!-- cannot stand inside a page: /usr/share/js/tool.js -->\n");
}

TEST_F(JoinedPageTest, FilesOfTheTemplateMayNotBeMissing) {
    write("index.html", "<script src=\"b.js\"></script>\n");
    EXPECT_THROW(joined(), job::JobError);
    write("b.js", "'</script>'");
    EXPECT_THROW(joined(), job::JobError);
}

}  // namespace
}  // namespace varnolix
