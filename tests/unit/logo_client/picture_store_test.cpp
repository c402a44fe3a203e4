#include "logo_client/picture_store.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "logo_client/files.h"

namespace varnolix::logos {
namespace {

const std::string jpegStart = "\xff\xd8\xff";
const std::string jpegEnd = "\xff\xd9";

std::string pictureOf(const std::string& inside) {
    return jpegStart + inside + jpegEnd;
}

std::string contentOf(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void write(const std::string& path, const std::string& content) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << content;
}

class PictureStoreTest : public testing::Test {
  protected:
    PictureStoreTest() {
        std::string pattern = testing::TempDir() + "varnolix-store-XXXXXX";
        top = mkdtemp(pattern.data());
        store = {top + "/logos", 64 * 1024 * 1024};
        std::filesystem::create_directory(store.folder);
    }
    ~PictureStoreTest() override { std::filesystem::remove_all(top); }
    PictureStoreTest(const PictureStoreTest&) = delete;
    PictureStoreTest& operator=(const PictureStoreTest&) = delete;

    /// Makes the entry look as if it was last used so many seconds ago.
    void age(const std::string& key, int seconds) const {
        std::filesystem::last_write_time(entryPath(store, key),
                                         std::filesystem::file_time_type::clock::now() - std::chrono::seconds(seconds));
    }

    /// Keys whose entries share a sub-folder.
    std::vector<std::string> neighbours(std::size_t count) const {
        std::vector<std::string> keys;
        const auto folder = std::filesystem::path(entryPath(store, "key 0")).parent_path();
        for (int number = 0; keys.size() < count; ++number) {
            const std::string key = "key " + std::to_string(number);
            if (std::filesystem::path(entryPath(store, key)).parent_path() == folder) keys.push_back(key);
        }
        return keys;
    }

    std::string top;
    PictureStore store;
};

TEST_F(PictureStoreTest, ReturnsWhatWasStored) {
    EXPECT_EQ(storedPicture(store, "key"), std::nullopt);
    const std::string picture = pictureOf(std::string("with a \0 byte", 13));
    keepPicture(store, "key", picture);
    EXPECT_EQ(storedPicture(store, "key"), picture);
    EXPECT_EQ(storedPicture(store, "another key"), std::nullopt);
    keepPicture(store, "key", pictureOf("new"));
    EXPECT_EQ(storedPicture(store, "key"), pictureOf("new"));
}

TEST_F(PictureStoreTest, LeavesNothingButTheEntry) {
    keepPicture(store, "key", pictureOf("a"));
    const auto folder = std::filesystem::path(entryPath(store, "key")).parent_path();
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
}

TEST_F(PictureStoreTest, IgnoresATruncatedEntry) {
    keepPicture(store, "key", pictureOf("some picture"));
    const std::string entry = contentOf(entryPath(store, "key"));
    for (std::size_t length = 0; length < entry.size(); ++length) {
        write(entryPath(store, "key"), entry.substr(0, length));
        ASSERT_EQ(storedPicture(store, "key"), std::nullopt) << length;
    }
    write(entryPath(store, "key"), entry);
    EXPECT_EQ(storedPicture(store, "key"), pictureOf("some picture"));
}

TEST_F(PictureStoreTest, IgnoresAnEntryWithAnyByteChanged) {
    keepPicture(store, "key", pictureOf("some picture"));
    const std::string entry = contentOf(entryPath(store, "key"));
    for (std::size_t place = 0; place < entry.size(); ++place) {
        std::string damaged = entry;
        damaged[place] = static_cast<char>(damaged[place] ^ 1);
        write(entryPath(store, "key"), damaged);
        ASSERT_EQ(storedPicture(store, "key"), std::nullopt) << place;
    }
    write(entryPath(store, "key"), entry + "more");
    EXPECT_EQ(storedPicture(store, "key"), std::nullopt);
}

TEST_F(PictureStoreTest, IgnoresAnEntryOfAnotherKey) {
    // As if both keys had the same hash.
    keepPicture(store, "key", pictureOf("of the key"));
    keepPicture(store, "other", pictureOf("of the other"));
    write(entryPath(store, "key"), contentOf(entryPath(store, "other")));
    EXPECT_EQ(storedPicture(store, "key"), std::nullopt);
}

TEST_F(PictureStoreTest, RemovesTheLeastRecentlyUsed) {
    const std::vector<std::string> keys = neighbours(5);
    const std::string picture = pictureOf(std::string(6000, 'x'));  // two disk blocks of 4 kB
    for (std::size_t i = 0; i < 4; ++i) {
        keepPicture(store, keys[i], picture);
        age(keys[i], 1000 - static_cast<int>(i));
    }
    EXPECT_EQ(storedPicture(store, keys[0]), picture);  // used now
    struct stat status {};
    ASSERT_EQ(stat(entryPath(store, keys[0]).c_str(), &status), 0);
    store.limit = 64 * 3 * 512 * static_cast<std::uint64_t>(status.st_blocks);
    keepPicture(store, keys[4], picture);
    EXPECT_EQ(storedPicture(store, keys[0]), picture);
    EXPECT_EQ(storedPicture(store, keys[1]), std::nullopt);
    EXPECT_EQ(storedPicture(store, keys[2]), std::nullopt);
    EXPECT_EQ(storedPicture(store, keys[3]), picture);
    EXPECT_EQ(storedPicture(store, keys[4]), picture);
}

TEST_F(PictureStoreTest, StoresNothingIfTheLimitIsZero) {
    store.limit = 0;
    keepPicture(store, "key", pictureOf("a"));
    EXPECT_EQ(storedPicture(store, "key"), std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(entryPath(store, "key")));
}

TEST_F(PictureStoreTest, StoresNothingWithoutAFolder) {
    store.folder = top + "/nowhere";
    keepPicture(store, "key", pictureOf("a"));
    EXPECT_EQ(storedPicture(store, "key"), std::nullopt);
}

TEST(PictureKey, DiffersIfAnyPartDiffers) {
    const std::string key = pictureKey("t", {"A=1"}, {"--x", "y"}, "m");
    EXPECT_NE(key, pictureKey("u", {"A=1"}, {"--x", "y"}, "m"));
    EXPECT_NE(key, pictureKey("t", {"A=2"}, {"--x", "y"}, "m"));
    EXPECT_NE(key, pictureKey("t", {"A=1"}, {"--x", "z"}, "m"));
    EXPECT_NE(key, pictureKey("t", {"A=1"}, {"--x", "y"}, "n"));
    EXPECT_FALSE(pictureKey("t", {}, {}, "m" + pictureOf("")).starts_with(pictureKey("t", {}, {}, "m")));
}

TEST(ContentHash, IsFnv1a) {
    EXPECT_EQ(hexadecimal(contentHash("")), "cbf29ce484222325");
    EXPECT_EQ(hexadecimal(contentHash("a")), "af63dc4c8601ec8c");
    EXPECT_EQ(hexadecimal(contentHash("foobar")), "85944171f73967e8");
}

}  // namespace
}  // namespace varnolix::logos
