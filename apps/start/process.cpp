// SPDX-License-Identifier: MIT
#include "apps/start/process.h"

#include "backends/descriptor/reason.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <fcntl.h>
#include <iostream>
#include <new>
#include <poll.h>
#include <streambuf>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace start {

namespace {

/// Standard output for std::cout. After a failure nothing more is written: a reader must not mistake output with a gap
/// for the whole.
class Output final : public std::streambuf {
public:
    int Error() const { return FirstError_; } ///< the errno value; 0 for none

protected:
    int_type overflow(int_type character) override {
        if (character != traits_type::eof())
            Waiting_ += traits_type::to_char_type(character);
        return traits_type::not_eof(character);
    }

    std::streamsize xsputn(const char* bytes, std::streamsize count) override {
        Waiting_.append(bytes, static_cast<std::size_t>(count));
        return count;
    }

    int sync() override {
        std::string_view left = Waiting_;
        while (FirstError_ == 0 && !left.empty())
            left.remove_prefix(WriteSome(left));
        Waiting_.clear();
        return FirstError_ == 0 ? 0 : -1;
    }

private:
    std::size_t WriteSome(std::string_view bytes) {
        const ssize_t count = ::write(STDOUT_FILENO, bytes.data(), bytes.size());
        if (count >= 0)
            return static_cast<std::size_t>(count);
        if (errno == EAGAIN)
            WaitForTheReader();
        else if (errno != EINTR)
            FirstError_ = errno;
        return 0;
    }

    static void WaitForTheReader() {
        pollfd output{STDOUT_FILENO, POLLOUT, 0};
        ::poll(&output, 1, -1); // also returns when the reader is gone; the next write reports that
    }

    std::string Waiting_;
    int FirstError_ = 0;
};

/// Never destroyed, because output may be written at the very end.
Output& TheOutput() {
    static auto* const output = new Output;
    return *output;
}

const char* NameOfProgram = "";

/// Without memory no text can be built, so each part is written on its own.
void Say(const char* text) {
    [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, text, std::strlen(text));
}

[[noreturn]] void EndWith(const char* why) {
    Say(NameOfProgram);
    Say(": ");
    Say(why);
    Say("\n");
    std::_Exit(NumberOf(ExitStatus::Failure));
}

// Not by an exception: it would pass through a window system that does not support exceptions, and there is little
// memory on its way. Every file is as the last completed save left it, as after any other end.
[[noreturn]] void EndWithoutMemory() {
    EndWith("out of memory; every file is as the last completed save left it");
}

/// Handles an exception that nothing catches: a library may throw for an allocation of its own that fails.
[[noreturn]] void EndByException() {
    const std::exception_ptr thrown = std::current_exception();
    try {
        if (thrown)
            std::rethrow_exception(thrown);
    } catch (const std::bad_alloc&) {
        EndWithoutMemory();
    } catch (const std::exception& exception) {
        EndWith(exception.what());
    } catch (...) {
    }
    EndWith("an unexpected failure");
}

/// If all lower descriptors are open, the file opened here gets this number.
void OpenInPlaceOf(int descriptor) {
    if (::fcntl(descriptor, F_GETFD) >= 0)
        return;
    // If there is no such device, a folder is used: it can't be written either.
    if (::open("/dev/null", O_RDONLY) < 0 && ::open("/", O_RDONLY | O_DIRECTORY) < 0)
        std::_Exit(NumberOf(ExitStatus::NotStarted));
}

} // namespace

void PrepareProcess(const char* program) {
    NameOfProgram = program;
    std::set_new_handler(EndWithoutMemory);
    std::set_terminate(EndByException);
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        OpenInPlaceOf(descriptor);
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    std::cout.rdbuf(&TheOutput());
    constexpr mode_t OthersBits = 077;
    ::umask(::umask(OthersBits) & OthersBits);
}

ExitStatus StatusAfterOutput(const char* program, ExitStatus status) {
    std::cout.flush();
    const int error = TheOutput().Error();
    if (error == 0)
        return status;
    std::cerr << program << ": can't write to standard output: " << backends::ReasonOf(error) << std::endl;
    return ExitStatus::NoOutput;
}

} // namespace start
