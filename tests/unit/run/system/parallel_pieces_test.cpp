#include "run/system/parallel_pieces.h"

#include <sys/wait.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <numeric>
#include <thread>
#include <vector>

#include "run/system/outside_tool.h"
#include "support/run_fixture.h"

namespace varnolix {
namespace {

constexpr int threadCounts[] = {1, 2, 3, 9};

/// Trouble ends a run, so the tools stay given up; a test takes that back.
class DoPiecesTest : public testing::FolderTest {
  protected:
    ~DoPiecesTest() override { runningTools.areGivenUp = false; }

    bool exists(const std::string& name) const { return std::filesystem::exists(folder() + name); }
};

using CallsAtOnceTest = testing::FolderTest;

TEST_F(CallsAtOnceTest, OneUnlessTheFileIsThere) {
    omp_set_num_threads(7);
    EXPECT_EQ(callsAtOnce(folder() + "promise"), 1);
    EXPECT_EQ(callsAtOnce(folder() + "missing/promise"), 1);
    write("promise", "");
    EXPECT_EQ(callsAtOnce(folder() + "promise"), 7);
    omp_set_num_threads(1);
    EXPECT_EQ(callsAtOnce(folder() + "promise"), 1);
}

TEST_F(CallsAtOnceTest, FolderIsNoPromiseButALinkToOneIs) {
    omp_set_num_threads(7);
    EXPECT_EQ(callsAtOnce(folder()), 1);
    write("promise", "");
    std::filesystem::create_symlink("promise", folder() + "link");
    EXPECT_EQ(callsAtOnce(folder() + "link"), 7);
}

TEST_F(DoPiecesTest, DoesEachOnce) {
    for (const int threads : threadCounts) {
        std::vector<int> done(100, 0);
        EXPECT_FALSE(doPieces(done.size(), threads, [&](std::size_t k) -> std::optional<OutputTrouble> {
            ++done[k];
            return std::nullopt;
        }));
        EXPECT_EQ(done, std::vector<int>(100, 1)) << threads;
    }
}

TEST_F(DoPiecesTest, OneThreadKeepsTheOrder) {
    std::vector<std::size_t> done;
    doPieces(20, 1, [&](std::size_t k) -> std::optional<OutputTrouble> {
        done.push_back(k);
        return std::nullopt;
    });
    std::vector<std::size_t> wanted(20);
    std::iota(wanted.begin(), wanted.end(), 0);
    EXPECT_EQ(done, wanted);
}

TEST_F(DoPiecesTest, NoPiecesAreNoWork) {
    EXPECT_FALSE(doPieces(0, 3, [](std::size_t) { return std::optional(OutputTrouble{"", ""}); }));
}

TEST_F(DoPiecesTest, SoManyAtATime) {
    std::atomic<int> now = 0;
    std::atomic<int> most = 0;
    doPieces(12, 3, [&](std::size_t) -> std::optional<OutputTrouble> {
        const int seen = ++now;
        int before = most;
        while (seen > before && !most.compare_exchange_weak(before, seen)) {
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        --now;
        return std::nullopt;
    });
    EXPECT_EQ(most, 3);
}

TEST_F(DoPiecesTest, EarliestTroubleCounts) {
    for (const int threads : threadCounts) {
        std::atomic<int> begun = 0;
        const auto trouble = doPieces(1000, threads, [&](std::size_t k) -> std::optional<OutputTrouble> {
            ++begun;
            // The earlier one takes longer to find out.
            if (k == 3) std::this_thread::sleep_for(std::chrono::milliseconds(20));
            if (k >= 3) return OutputTrouble{std::to_string(k), "reason"};
            return std::nullopt;
        });
        ASSERT_TRUE(trouble);
        EXPECT_EQ(trouble->path, "3") << threads;
        EXPECT_LT(begun, 100) << threads;
        runningTools.areGivenUp = false;
    }
}

TEST_F(DoPiecesTest, TroubleEndsTheToolsOfOthersAndTakesTheirFiles) {
    const auto began = std::chrono::steady_clock::now();
    std::atomic<int> finished = 0;
    const auto trouble = doPieces(6, 3, [&](std::size_t k) -> std::optional<OutputTrouble> {
        const std::string name = std::to_string(k);
        if (k == 2) {
            while (!exists("half0") || !exists("half1")) std::this_thread::sleep_for(std::chrono::milliseconds(2));
            return OutputTrouble{"lost", "reason"};
        }
        ToolWork work({});
        finished += work.run("echo half > " + folder() + "half" + name + "; sleep 60", folder() + "half" + name);
        return std::nullopt;
    });
    ASSERT_TRUE(trouble);
    EXPECT_EQ(trouble->path, "lost");
    EXPECT_EQ(finished, 0);
    EXPECT_TRUE(std::filesystem::is_empty(folder()));
    EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(30));
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(alarm(0), 0U);
}

TEST_F(DoPiecesTest, StubbornToolsAreKilled) {
    const auto trouble = doPieces(2, 2, [&](std::size_t k) -> std::optional<OutputTrouble> {
        if (k == 1) {
            while (!exists("half")) std::this_thread::sleep_for(std::chrono::milliseconds(2));
            return OutputTrouble{"lost", "reason"};
        }
        ToolWork work({});
        work.run("trap '' TERM; echo half > " + folder() + "half; sleep 60; sleep 60", folder() + "half");
        return std::nullopt;
    });
    EXPECT_TRUE(trouble);
    EXPECT_TRUE(std::filesystem::is_empty(folder()));
    EXPECT_EQ(alarm(0), 0U);
}

}  // namespace
}  // namespace varnolix
