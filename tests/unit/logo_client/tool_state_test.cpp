#include "logo_client/tool_state.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace varnolix::logos {
namespace {

class ToolStateTest : public testing::Test {
  protected:
    ToolStateTest() {
        std::string pattern = testing::TempDir() + "varnolix-tools-XXXXXX";
        top = mkdtemp(pattern.data());
        std::filesystem::create_directory(top + "/package");
        write("gs", "program");
        write("package/logo.py", "source");
        files = {{top + "/gs", top + "/package"}, {top + "/fonts"}};
    }
    ~ToolStateTest() override { std::filesystem::remove_all(top); }
    ToolStateTest(const ToolStateTest&) = delete;
    ToolStateTest& operator=(const ToolStateTest&) = delete;

    void write(const std::string& name, const std::string& content) const {
        std::ofstream(top + "/" + name, std::ios::trunc) << content;
    }

    /// Sets the access and modification times to the past, as installing a package does.
    void backdate(const std::string& name) const {
        const struct timespec times[2] = {{1, 0}, {1, 0}};
        utimensat(AT_FDCWD, (top + "/" + name).c_str(), static_cast<const struct timespec*>(times), 0);
        usleep(20000);  // the time stamps of file systems have steps of a few milliseconds
    }

    std::string top;
    ToolFiles files;
};

TEST_F(ToolStateTest, StaysWhileNothingChanges) {
    EXPECT_NE(toolState(files), "");
    EXPECT_EQ(toolState(files), toolState(files));
}

TEST_F(ToolStateTest, ChangesIfAFileIsReplacedByOneOfEqualSizeAndTime) {
    backdate("gs");
    const std::string before = toolState(files);
    write("new", "PROGRAM");
    backdate("new");
    std::filesystem::rename(top + "/new", top + "/gs");
    EXPECT_NE(toolState(files), before);
}

TEST_F(ToolStateTest, ChangesIfAFileIsOverwrittenAndBackdated) {
    backdate("package/logo.py");
    const std::string before = toolState(files);
    write("package/logo.py", "SOURCE");
    backdate("package/logo.py");
    EXPECT_NE(toolState(files), before);
}

TEST_F(ToolStateTest, ChangesIfAPackageGetsAnotherFile) {
    const std::string before = toolState(files);
    write("package/color.py", "");
    EXPECT_NE(toolState(files), before);
}

TEST_F(ToolStateTest, ChangesIfAnOptionalFileAppears) {
    const std::string before = toolState(files);
    std::filesystem::create_directory(top + "/fonts");
    EXPECT_NE(toolState(files), before);
}

TEST_F(ToolStateTest, IsEmptyIfANeededFileIsMissing) {
    std::filesystem::remove(top + "/gs");
    EXPECT_EQ(toolState(files), "");
}

}  // namespace
}  // namespace varnolix::logos
