#include "job/downloads/motif_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>
#include <zlib.h>

#include <filesystem>
#include <fstream>

namespace varnolix::job {

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

/// A folder that goes with the test.
class MotifFilesTest : public testing::Test {
  protected:
    MotifFilesTest() {
        folder = fs::temp_directory_path() / ("motif_files_test_" + std::to_string(getpid()) + "_" +
                                              testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::create_directories(folder);
    }
    ~MotifFilesTest() override {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }
    std::string write(const std::string& name, const std::string& text) const {
        std::ofstream(folder / name, std::ios::binary) << text;
        return (folder / name).string();
    }

    fs::path folder;
};

/// The text as one member of a gzip file.
std::string packed(std::string text) {
    z_stream stream{};
    constexpr int gzip = 16 + MAX_WBITS;
    deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, gzip, 8, Z_DEFAULT_STRATEGY);
    std::string result(deflateBound(&stream, text.size()) + 32, '\0');
    stream.next_in = reinterpret_cast<Bytef*>(text.data());
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(result.data());
    stream.avail_out = static_cast<uInt>(result.size());
    deflate(&stream, Z_FINISH);
    result.resize(stream.total_out);
    deflateEnd(&stream);
    return result;
}

/// Long, and hardly to be packed.
std::string longText() {
    std::string text;
    std::uint32_t state = 1;
    while (text.size() < 3'000'000) text += static_cast<char>((state = state * 1664525U + 1013904223U) >> 24U);
    return text;
}

}  // namespace

TEST(Unpacked, LeavesOtherTextAlone) {
    EXPECT_EQ(unpacked(">M1\n").text, ">M1\n");
    EXPECT_EQ(unpacked("").text, "");
    EXPECT_EQ(unpacked("\x1F").text, "\x1F");
}

TEST(Unpacked, AllMembersOfGzip) {
    const std::string text = longText();
    EXPECT_EQ(unpacked(packed(text)).text, text);
    EXPECT_EQ(unpacked(packed("a\n") + packed("") + packed("b\n")).text, "a\nb\n");
    EXPECT_EQ(unpacked(packed("a") + std::string(512, '\0')).text, "a");
}

TEST(Unpacked, RefusesBrokenGzip) {
    const std::string whole = packed(longText());
    for (const std::size_t length :
         {std::size_t{2}, std::size_t{9}, std::size_t{12}, whole.size() / 2, whole.size() - 1}) {
        const TextOrReason found = unpacked(whole.substr(0, length));
        EXPECT_EQ(found.reason, "gzip data that ends too early") << length;
        EXPECT_EQ(found.text, "");
    }
    std::string changed = whole;
    changed[changed.size() - 6] ^= 1;  // in the checksum
    EXPECT_EQ(unpacked(changed).reason, "broken gzip data");
    EXPECT_EQ(unpacked(packed("a") + "rest").reason, "gzip data with other data behind it");
}

TEST(Unpacked, RefusesWhatBecomesTooLong) {
    const std::string small = packed(std::string(5'000'000, 'A'));
    ASSERT_LT(small.size(), 10'000U);
    EXPECT_THAT(unpacked(small, 1U << 20U).reason, HasSubstr("more than 1 MB of text when it is unpacked"));
    EXPECT_EQ(unpacked(small, 5'000'000).reason, "");
}

TEST_F(MotifFilesTest, ReadsAFile) {
    const MotifFiles found = readMotifFiles(write("some.motifs.jaspar.gz", packed(">M1\n")));
    ASSERT_EQ(found.files.size(), 1U) << found.reason;
    EXPECT_EQ(found.files[0].text, ">M1\n");
    EXPECT_EQ(found.files[0].baseName, "some.motifs");
    EXPECT_EQ(found.files[0].path, (folder / "some.motifs.jaspar.gz").string());
}

TEST_F(MotifFilesTest, ReadsAFolderInTheOrderOfNames) {
    write("b.pfm", "b");
    write("a.pfm", packed("a"));
    write(".hidden", "h");
    fs::create_directory(folder / "c");
    fs::create_symlink(folder / "b.pfm", folder / "d.pfm");
    const MotifFiles found = readMotifFiles(folder.string());
    EXPECT_EQ(found.reason, "");
    std::vector<std::string> texts;
    for (const MotifFile& file : found.files) texts.push_back(file.baseName + "=" + file.text);
    EXPECT_EQ(texts, (std::vector<std::string>{"a=a", "b=b", "d=b"}));
}

TEST_F(MotifFilesTest, SaysWhatCannotBeRead) {
    const auto reasonFor = [](const std::string& path) { return readMotifFiles(path).reason; };
    EXPECT_EQ(reasonFor((folder / "none").string()), "there is no such file");
    EXPECT_EQ(reasonFor(folder.string()), "no file is in the folder");
    EXPECT_EQ(reasonFor("/dev/zero"), "it is neither a file nor a folder");
    write("a", "fine");
    const std::string bad = write("b", "\x1F\x8B");
    const MotifFiles found = readMotifFiles(folder.string());
    EXPECT_EQ(found.path, bad);
    EXPECT_EQ(found.reason, "gzip data that ends too early");
}

TEST(BaseNameOf, LeavesOutFoldersAndExtensions) {
    EXPECT_EQ(baseNameOf("/some/where/MA0004.1.jaspar"), "MA0004.1");
    EXPECT_EQ(baseNameOf("MA0004.1"), "MA0004.1");
    EXPECT_EQ(baseNameOf("AHR_HUMAN.H11MO.0.B.pcm"), "AHR_HUMAN.H11MO.0.B");
    EXPECT_EQ(baseNameOf("AHR_HUMAN.H11MO.0.B"), "AHR_HUMAN.H11MO.0.B");
    EXPECT_EQ(baseNameOf("x/file.txt.gz"), "file");
    EXPECT_EQ(baseNameOf(".txt"), ".txt");
    EXPECT_EQ(baseNameOf("-"), "stdin");
}

}  // namespace varnolix::job
