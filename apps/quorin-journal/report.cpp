// SPDX-License-Identifier: MIT
#include "apps/quorin-journal/report.h"

#include <iostream>

namespace reader {

using start::ExitStatus;

namespace {

constexpr std::size_t WrittenAtOnce = 65536; // std::cout keeps everything until it is flushed

void Tell(const std::string& what) {
    std::cerr << "quorin-journal: " << what << "\n";
}

} // namespace

void Report::Write(std::string_view bytes) {
    std::cout << bytes;
    Waiting_ += bytes.size();
    if (Waiting_ >= WrittenAtOnce)
        Flush();
}

void Report::WriteLine(std::string_view line) {
    Write(line);
    Write("\n");
}

void Report::Flush() {
    std::cout.flush();
    Waiting_ = 0;
}

bool Report::Lost() const {
    return !std::cout;
}

void Report::Odd(const std::string& what) {
    Tell(what);
    if (Status_ == ExitStatus::Ended)
        Status_ = ExitStatus::Odd;
}

void Report::Found(const std::string& finding) {
    WriteLine("  ! " + finding);
    if (Status_ == ExitStatus::Ended)
        Status_ = ExitStatus::Odd;
}

void Report::Failed(const std::string& what) {
    Tell(what);
    Status_ = ExitStatus::Failure;
}

void Report::Refused(const std::string& what) {
    Tell(what);
    Status_ = ExitStatus::NotStarted;
}

} // namespace reader
