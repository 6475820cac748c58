// SPDX-License-Identifier: MIT
#include "backends/descriptor/descriptor.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>
#include <utility>

namespace backends {
namespace {

int Opened() {
    return ::open("/dev/null", O_RDONLY | O_CLOEXEC);
}

bool IsOpen(int number) {
    return ::fcntl(number, F_GETFD) != -1;
}

TEST(OwnerOfADescriptor, ClosesItAtTheEndOfItsLife) {
    const int number = Opened();
    {
        const Descriptor owner(number);
        EXPECT_TRUE(owner.Valid());
        EXPECT_EQ(owner.Number(), number);
    }
    EXPECT_FALSE(IsOpen(number));
}

TEST(OwnerOfADescriptor, ClosesWhatItHeldWhenItTakesAnotherOne) {
    const int first = Opened();
    const int second = Opened();
    Descriptor owner(first);
    owner = Descriptor(second);
    EXPECT_FALSE(IsOpen(first));
    EXPECT_TRUE(IsOpen(second));
    EXPECT_EQ(owner.Number(), second);
}

TEST(OwnerOfADescriptor, GivesItAwayByAMove) {
    const int number = Opened();
    Descriptor first(number);
    const Descriptor second(std::move(first));
    EXPECT_EQ(first.Number(), -1); // NOLINT(bugprone-use-after-move): this is what a move leaves
    EXPECT_EQ(second.Number(), number);
    EXPECT_TRUE(IsOpen(number));
}

TEST(OwnerOfADescriptor, SaysWhyItCouldNotBeClosed) {
    const int number = Opened();
    Descriptor owner(number);
    ::close(number);
    EXPECT_EQ(owner.Close(), EBADF);
    EXPECT_EQ(owner.Close(), 0) << "there is none any more";
}

TEST(InterruptedCall, IsMadeAgain) {
    int calls = 0;
    const auto call = [&calls] {
        errno = EINTR;
        return ++calls < 3 ? -1 : 7;
    };
    EXPECT_EQ(Repeated(call), 7);
    EXPECT_EQ(calls, 3);
}

} // namespace
} // namespace backends
