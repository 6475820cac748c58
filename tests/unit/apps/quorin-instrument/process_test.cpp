// SPDX-License-Identifier: MIT
// How a program ends that can't continue.
#include "apps/start/process.h"

#include <array>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <new>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace start {
namespace {

constexpr int WentOn = 99;

struct Ending {
    int Status = 0;
    std::string Said; ///< on standard error
};

/// Runs the action in a prepared process of its own.
Ending EndOf(const std::function<void()>& action) {
    std::array<int, 2> ends{};
    EXPECT_EQ(::pipe(ends.data()), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(ends[1], STDERR_FILENO);
        PrepareProcess("quorin");
        [&action]() noexcept { action(); }(); // an exception is not caught
        ::_exit(WentOn);
    }
    ::close(ends[1]);
    Ending ending;
    std::array<char, 1000> block;
    for (ssize_t count = 0; (count = ::read(ends[0], block.data(), block.size())) > 0;)
        ending.Said.append(block.data(), static_cast<std::size_t>(count));
    ::close(ends[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    ending.Status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return ending;
}

const std::string OutOfMemory = "quorin: out of memory; every file is as the last completed save left it\n";

/// A library may request memory by a call that does not throw, and continue without the memory.
TEST(AProcess, EndsWhereMemoryIsAskedForWithoutAnException) {
    const Ending ending = EndOf([] {
#ifdef __SANITIZE_ADDRESS__
        std::get_new_handler()(); // the sanitizer's allocator never calls it
#else
        const volatile std::size_t most = std::numeric_limits<std::size_t>::max() / 4;
        void* volatile memory = ::operator new(most, std::nothrow);
        ::operator delete(memory);
#endif
    });
    EXPECT_EQ(ending.Status, 1);
    EXPECT_EQ(ending.Said, OutOfMemory);
}

/// A library may also throw this exception itself.
TEST(AProcess, EndsWhereALibrarySaysThatMemoryIsShort) {
    const Ending ending = EndOf([] { throw std::bad_alloc(); });
    EXPECT_EQ(ending.Status, 1);
    EXPECT_EQ(ending.Said, OutOfMemory);
}

TEST(AProcess, SaysWhatWasThrownWhereNobodyCatchesIt) {
    const Ending ending = EndOf([] { throw std::runtime_error("no such thing"); });
    EXPECT_EQ(ending.Status, 1);
    EXPECT_EQ(ending.Said, "quorin: no such thing\n");
}

TEST(AProcess, SaysThatItCantGoOnWhereNothingSaysWhy) {
    for (const auto& action : {std::function<void()>([] { throw 7; }), std::function<void()>(std::terminate)}) {
        const Ending ending = EndOf(action);
        EXPECT_EQ(ending.Status, 1);
        EXPECT_EQ(ending.Said, "quorin: an unexpected failure\n");
    }
}

} // namespace
} // namespace start
