#include "run/system/memory_limits.h"

#include <sys/resource.h>

#include <cstdlib>

#include "rank/usable_memory.h"
#include "support/run_fixture.h"

namespace varnolix {
namespace {

constexpr const char* mountsOfVersion2 =
    "22 1 8:1 / / rw - ext4 /dev/sda1 rw\n"
    "30 22 0:26 / /sys/fs/cgroup rw,nosuid shared:4 - cgroup2 cgroup2 rw,nsdelegate\n";
constexpr const char* mountsOfVersion1 =
    "31 23 0:28 / /sys/fs/cgroup rw - tmpfs tmpfs rw,mode=755\n"
    "32 31 0:29 / /sys/fs/cgroup/cpu rw - cgroup cgroup rw,cpu\n"
    "35 31 0:32 / /sys/fs/cgroup/memory rw - cgroup cgroup rw,memory\n";

/// A root folder that stands in for the one of the system.
class ControlGroupTest : public testing::FolderTest {
  protected:
    void put(const std::string& name, std::string_view text) const {
        std::filesystem::create_directories(std::filesystem::path(folder() + name).parent_path());
        write(name, text);
    }
    void enter(std::string_view groups, std::string_view mounts) const {
        put("proc/self/cgroup", groups);
        put("proc/self/mountinfo", mounts);
    }
    /// 0 if there is no limit.
    std::size_t limit() const {
        const std::string root = folder();
        return controlGroupLimit(root.substr(0, root.size() - 1)).value_or(0);
    }
};

TEST_F(ControlGroupTest, NoGroupsGiveNoLimit) {
    EXPECT_EQ(limit(), 0U);
    enter("", "");
    EXPECT_EQ(limit(), 0U);
}

TEST_F(ControlGroupTest, Version2LimitsByTheGroupOfTheProcess) {
    enter("0::/job\n", mountsOfVersion2);
    put("sys/fs/cgroup/job/memory.max", "400000000\n");
    put("sys/fs/cgroup/other/memory.max", "1000\n");
    EXPECT_EQ(limit(), 400'000'000U);
}

TEST_F(ControlGroupTest, OuterGroupsCountToo) {
    enter("0::/outer/middle/job\n", mountsOfVersion2);
    put("sys/fs/cgroup/outer/middle/job/memory.max", "500\n");
    put("sys/fs/cgroup/outer/middle/memory.max", "max\n");
    put("sys/fs/cgroup/outer/memory.max", "300\n");
    EXPECT_EQ(limit(), 300U);
    put("sys/fs/cgroup/memory.max", "200\n");
    EXPECT_EQ(limit(), 200U);
    put("sys/fs/cgroup/outer/middle/job/memory.max", "100\n");
    EXPECT_EQ(limit(), 100U);
}

TEST_F(ControlGroupTest, Version1LimitsByItsMemoryController) {
    enter("9:name=systemd:/x\n4:cpu,memory:/outer/job\n3:cpuset:/y\n", mountsOfVersion1);
    put("sys/fs/cgroup/memory/outer/job/memory.limit_in_bytes", "9223372036854771712\n");
    put("sys/fs/cgroup/memory/outer/memory.limit_in_bytes", "700\n");
    put("sys/fs/cgroup/cpu/outer/job/memory.limit_in_bytes", "1\n");
    EXPECT_EQ(limit(), 700U);
}

TEST_F(ControlGroupTest, BothVersionsCount) {
    enter("4:memory:/job\n0::/job\n",
          std::string(mountsOfVersion1) + "41 31 0:38 / /sys/fs/cgroup/unified rw - cgroup2 cgroup2 rw\n");
    put("sys/fs/cgroup/memory/job/memory.limit_in_bytes", "700\n");
    EXPECT_EQ(limit(), 700U);
    put("sys/fs/cgroup/unified/job/memory.max", "600\n");
    EXPECT_EQ(limit(), 600U);
}

TEST_F(ControlGroupTest, WithoutATableOfMountsTheUsualFoldersAreUsed) {
    put("proc/self/cgroup", "4:memory:/job\n0::/job\n");
    put("sys/fs/cgroup/job/memory.max", "800\n");
    EXPECT_EQ(limit(), 800U);
    put("sys/fs/cgroup/memory/job/memory.limit_in_bytes", "700\n");
    EXPECT_EQ(limit(), 700U);
}

TEST_F(ControlGroupTest, AMountMayShowAnInnerGroup) {
    // As in a container, which sees its own group as the outermost one.
    enter("4:memory:/docker/abc/job\n", "35 31 0:32 /docker/abc /groups rw - cgroup cgroup rw,memory\n");
    put("groups/job/memory.limit_in_bytes", "700\n");
    EXPECT_EQ(limit(), 700U);
    put("groups/memory.limit_in_bytes", "600\n");
    EXPECT_EQ(limit(), 600U);
    // If the own group cannot be seen, the shown one counts.
    put("proc/self/cgroup", "4:memory:/docker/abcdef\n");
    EXPECT_EQ(limit(), 600U);
    put("proc/self/cgroup", "4:memory:/../abc\n");
    EXPECT_EQ(limit(), 600U);
}

TEST_F(ControlGroupTest, AnythingButANumberMeansNoLimit) {
    for (const char* text : {"max\n", "", "many\n", "-5\n", "12x\n", "99999999999999999999999\n"}) {
        enter("0::/job\n", mountsOfVersion2);
        put("sys/fs/cgroup/job/memory.max", text);
        EXPECT_EQ(limit(), 0U) << text;
    }
    enter("nonsense\n::\n0::/job\n", "nonsense\n - \n" + std::string(mountsOfVersion2));
    put("sys/fs/cgroup/job/memory.max", "500\n");
    EXPECT_EQ(limit(), 500U);
}

TEST_F(ControlGroupTest, WhatIsThereIsWhatTheMachineHasAvailable) {
    put("proc/meminfo", "MemTotal:       4000000 kB\nHugePages_Total:       0\nMemAvailable:       300 kB\nX: 1 kB\n");
    const std::string root = std::filesystem::path(folder()).parent_path();
    EXPECT_EQ(memoryAvailable(root), 300U * 1024);
    EXPECT_LE(memoryAvailable(), memoryOfProcess());
    EXPECT_GT(memoryAvailable(root + "/nowhere"), 300U * 1024);
}

// AddressSanitizer itself maps more memory than these tests allow.
#if !defined(__SANITIZE_ADDRESS__)

/// Runs in a child process: sets a limit and checks what the process may use.
[[noreturn]] void checkMemoryUnder(__rlimit_resource_t resource, std::size_t (*memory)(),
                                   bool (*isRight)(std::size_t)) {
    const rlimit limit{std::size_t{1} << 28U, std::size_t{1} << 28U};
    setrlimit(resource, &limit);
    std::_Exit(isRight(memory()) ? 0 : 3);
}

TEST(UsableMemoryDeathTest, LimitsOfTheProcessCount) {
    const auto isLimit = [](std::size_t bytes) { return bytes == std::size_t{1} << 28U; };
    ASSERT_GT(usableMemory(), std::size_t{1} << 28U) << "this machine is too small for the test";
    EXPECT_EXIT(checkMemoryUnder(RLIMIT_AS, usableMemory, isLimit), ::testing::ExitedWithCode(0), "");
    EXPECT_EXIT(checkMemoryUnder(RLIMIT_DATA, usableMemory, isLimit), ::testing::ExitedWithCode(0), "");
}

TEST(UsableMemoryDeathTest, MappedMemoryIsNotFree) {
    const auto isLess = [](std::size_t bytes) { return bytes < std::size_t{1} << 28U; };
    EXPECT_EXIT(checkMemoryUnder(RLIMIT_AS, memoryLeft, isLess), ::testing::ExitedWithCode(0), "");
    EXPECT_LT(memoryLeft(), memoryOfProcess());
}

#endif

}  // namespace
}  // namespace varnolix
