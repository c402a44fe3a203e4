#include "run/system/outside_tool.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <thread>

#include "support/run_fixture.h"

namespace varnolix {
namespace {

int statusOf(const char* command) {
    return std::system(command);
}

TEST(InterruptOf, IsThatOfTheToolOrOfItsShell) {
    EXPECT_EQ(interruptOf(statusOf("kill -INT $$")), SIGINT);
    EXPECT_EQ(interruptOf(statusOf("kill -QUIT $$")), SIGQUIT);
    EXPECT_EQ(interruptOf(statusOf("exit 130")), SIGINT);
    EXPECT_EQ(interruptOf(statusOf("exit 131")), SIGQUIT);
}

TEST(InterruptOf, IsNoneForAnyOtherEnd) {
    for (const char* command : {"exit 0", "exit 1", "exit 2", "exit 3", "exit 127", "exit 129", "exit 132", "exit 143",
                                "kill -TERM $$", "kill -KILL $$", "kill -HUP $$"}) {
        EXPECT_EQ(interruptOf(statusOf(command)), 0) << command;
    }
}

class ToolWorkTest : public testing::FolderTest {
  protected:
    ToolWorkTest() {
        // The child of a death test shares the folder.
        GTEST_FLAG_SET(death_test_style, "fast");
        // A caller in the background may have some of them ignored.
        for (const int number : {SIGINT, SIGQUIT, SIGTERM, SIGHUP}) std::signal(number, SIG_DFL);
    }

    std::string path(const char* name) const { return folder() + name; }
    bool exists(const char* name) const { return std::filesystem::exists(path(name)); }

    /// Runs a command that is told to print into the file "out".
    std::string printed(const std::string& command) {
        ToolWork work({});
        work.run("{ " + command + "\n} > " + path("out"), path("out"));
        return read("out");
    }
};

TEST_F(ToolWorkTest, ShellTakesTheCommand) {
    EXPECT_EQ(printed("echo \"$0 $#\"; echo 'a  b' | tr a c"), "sh 0\nc  b\n");
}

TEST_F(ToolWorkTest, WaitsForTheEnd) {
    EXPECT_EQ(printed("sleep 0.2; echo end"), "end\n");
}

TEST_F(ToolWorkTest, FailuresChangeNothing) {
    ToolWork work({path("own")});
    write("own", "");
    for (const char* command : {"exit 1", "exit 255", "kill -TERM $$", "/no/such/tool 2> /dev/null", ")("}) {
        write("product", "half");
        work.run(std::string(command) + " 2> /dev/null", path("product"));
        EXPECT_EQ(read("product"), "half") << command;
    }
    EXPECT_TRUE(exists("own"));
}

TEST_F(ToolWorkTest, CapturedConsoleIsShownLater) {
    const CapturedConsole console;
    EXPECT_TRUE(console.isEmpty());
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    {
        ToolWork work({});
        work.run("echo out; echo err >&2; printf more", path("product"), &console);
        std::cout << "ours\n";
    }
    EXPECT_FALSE(console.isEmpty());
    console.print();
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "ours\nout\nmore");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "err\n");
}

TEST_F(ToolWorkTest, LeavesNoChild) {
    printed("true");
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST_F(ToolWorkTest, ToolsHaveTheActionsOfTheCaller) {
    // Field SigIgn of the process's status, in hexadecimal digits: SIGXFSZ is bit 24, SIGTTIN and SIGTTOU 20 and 21.
    std::signal(SIGXFSZ, SIG_IGN);
    const std::string ignored = printed("grep SigIgn /proc/$$/status");
    std::signal(SIGXFSZ, SIG_DFL);
    const unsigned long long set = std::stoull(ignored.substr(ignored.find('\t')), nullptr, 16);
    EXPECT_EQ(set >> (SIGXFSZ - 1) & 1U, 0U) << ignored;
    for (const int number : {SIGINT, SIGQUIT, SIGTERM, SIGHUP, SIGALRM, SIGCHLD}) {
        EXPECT_EQ(set >> (number - 1) & 1U, 0U) << number << ' ' << ignored;
    }
}

TEST_F(ToolWorkTest, ActionsAreAsBeforeBehindTheLastWork) {
    const auto actionOf = [](int number) {
        struct sigaction action {};
        sigaction(number, nullptr, &action);
        return action.sa_handler;
    };
    {
        ToolWork outer({});
        EXPECT_NE(actionOf(SIGINT), SIG_DFL);
        { ToolWork inner({}); }
        EXPECT_NE(actionOf(SIGINT), SIG_DFL);
    }
    for (const int number : {SIGINT, SIGQUIT, SIGTERM, SIGHUP, SIGALRM, SIGTTIN, SIGTTOU}) {
        EXPECT_EQ(actionOf(number), SIG_DFL) << number;
    }
}

TEST_F(ToolWorkTest, SeveralThreadsMayWorkAtATime) {
    constexpr int threads = 8;
    constexpr int calls = 20;
    std::vector<std::thread> workers;
    for (int worker = 0; worker < threads; ++worker) {
        workers.emplace_back([this, worker] {
            for (int call = 0; call < calls; ++call) {
                const std::string file = folder() + std::to_string(worker) + "_" + std::to_string(call);
                ToolWork work({});
                work.run("echo done > " + file, file);
            }
        });
    }
    for (std::thread& worker : workers) worker.join();
    int written = 0;
    for (const auto& file : std::filesystem::directory_iterator(folder())) {
        written += file.file_size() == 5 ? 1 : 0;
    }
    EXPECT_EQ(written, threads * calls);
}

using ToolWorkDeathTest = ToolWorkTest;

TEST_F(ToolWorkDeathTest, InterruptedToolEndsTheRunAndItsFiles) {
    write("own", "");
    write("other", "");
    EXPECT_EXIT(
        {
            ToolWork work({path("own")});
            work.run("echo half > " + path("product") + "; kill -INT $$", path("product"));
        },
        ::testing::KilledBySignal(SIGINT), "");
    EXPECT_FALSE(exists("own"));
    EXPECT_FALSE(exists("product"));
    EXPECT_TRUE(exists("other"));
}

TEST_F(ToolWorkDeathTest, SignalBetweenTheCallsEndsTheRunAtTheNext) {
    write("own", "");
    EXPECT_EXIT(
        {
            ToolWork work({path("own")});
            work.run("true", path("product"));
            raise(SIGTERM);
            work.run("echo > " + path("late"), path("late"));
        },
        ::testing::KilledBySignal(SIGTERM), "");
    EXPECT_FALSE(exists("own"));
    EXPECT_FALSE(exists("late"));
}

TEST_F(ToolWorkDeathTest, SignalBehindTheLastCallEndsTheRunWithTheWork) {
    EXPECT_EXIT(
        {
            {
                ToolWork work({});
                raise(SIGHUP);
                write("finished", "");
            }
            write("late", "");
        },
        ::testing::KilledBySignal(SIGHUP), "");
    EXPECT_TRUE(exists("finished"));
    EXPECT_FALSE(exists("late"));
}

TEST_F(ToolWorkDeathTest, SignalReachesTheToolsOfAllThreads) {
    EXPECT_EXIT(
        {
            std::vector<std::thread> workers;
            for (int worker = 0; worker < 6; ++worker) {
                workers.emplace_back([this, worker] {
                    const std::string file = path("product") + std::to_string(worker);
                    const std::string own = path("own") + std::to_string(worker);
                    ToolWork work({own});
                    std::ofstream(own).close();
                    work.run("echo half > " + file + "; exec sleep 60", file);
                });
            }
            // All six have begun.
            const auto count = [this] { return std::distance(std::filesystem::directory_iterator(folder()), {}); };
            while (count() < 12) std::this_thread::sleep_for(std::chrono::milliseconds(5));
            kill(getpid(), SIGTERM);
            for (std::thread& worker : workers) worker.join();
        },
        ::testing::KilledBySignal(SIGTERM), "");
    EXPECT_TRUE(std::filesystem::is_empty(folder()));
}

}  // namespace
}  // namespace varnolix
