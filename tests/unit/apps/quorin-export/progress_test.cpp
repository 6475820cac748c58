// SPDX-License-Identifier: MIT
#include "apps/quorin-export/progress.h"

#include "apps/quorin-export/export_main.h"
#include "tests/unit/apps/quorin-console/climate_root.h"

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace exporter {
namespace {

using testing::MatchesRegex;

/// While it exists, standard error is a terminal.
class ErrorsOnATerminal {
public:
    ErrorsOnATerminal() : Master_(::posix_openpt(O_RDWR | O_NOCTTY)), Before_(::dup(STDERR_FILENO)) {
        ::grantpt(Master_);
        ::unlockpt(Master_);
        const int terminal = ::open(::ptsname(Master_), O_RDWR | O_NOCTTY);
        ::dup2(terminal, STDERR_FILENO);
        ::close(terminal);
    }
    ErrorsOnATerminal(const ErrorsOnATerminal&) = delete;
    ErrorsOnATerminal& operator=(const ErrorsOnATerminal&) = delete;
    ~ErrorsOnATerminal() {
        ::dup2(Before_, STDERR_FILENO);
        ::close(Before_);
        ::close(Master_);
    }
    /// Returns what a person has seen.
    std::string Seen() const {
        std::string seen;
        std::array<char, 4096> part{};
        ::fcntl(Master_, F_SETFL, O_NONBLOCK);
        for (ssize_t count = 0; (count = ::read(Master_, part.data(), part.size())) > 0;)
            seen.append(part.data(), static_cast<std::size_t>(count));
        return seen;
    }

private:
    int Master_;
    int Before_;
};

class ProgressOfAnExport : public console::ClimateRoot {
protected:
    ProgressOfAnExport() {
        std::string table = "Site|Moisture\n";
        for (int i = 0; i < 4000; ++i)
            table += "Loft|20.5 %\n";
        Put("qrn0001.txt", table);
        Progress::Patience = {};
    }
    ~ProgressOfAnExport() override { Progress::Patience = Usual_; }

    /// Returns what stands on the terminal.
    std::string Export(const char* format) {
        const std::string root = Root.Path().string(), output = Out("large");
        const char* const words[] = {"quorin-export", "--root", root.c_str(), "qrn0001.txt",
                                     "--format",      format,   "-o",         output.c_str()};
        const ErrorsOnATerminal terminal;
        EXPECT_EQ(ExportMain(static_cast<int>(std::size(words)), words), start::ExitStatus::Ended);
        return terminal.Seen();
    }

    const ProgressClock::duration Usual_ = Progress::Patience;
};

TEST_F(ProgressOfAnExport, IsToldInEachFormat) {
    EXPECT_THAT(Export("csv"), MatchesRegex("\rqrn0001.txt: [0-9]+ %.*\r\x1b\\[K"));
    EXPECT_THAT(Export("xlsx"), MatchesRegex("\rqrn0001.txt: 25 %.*\r\x1b\\[K\r.*/large: 99 %\r\x1b\\[K"));
    EXPECT_THAT(Export("sqlite"), MatchesRegex("\rqrn0001.txt: 12 %.*\r\x1b\\[K\r.*/large: 99 %\r\x1b\\[K"));
}

TEST_F(ProgressOfAnExport, IsNotToldOfAShortOne) {
    Progress::Patience = std::chrono::hours(1);
    for (const char* format : {"csv", "xlsx", "sqlite"})
        EXPECT_EQ(Export(format), "") << format;
}

TEST(Progress, IsNeverAllBeforeTheEnd) {
    const ErrorsOnATerminal terminal;
    {
        Progress progress("a", 100, ProgressClock::now() - std::chrono::hours(1));
        progress.Advance(250);
    }
    EXPECT_EQ(terminal.Seen(), "\ra: 99 %\r\x1b[K");
}

} // namespace
} // namespace exporter
