// SPDX-License-Identifier: MIT
// The real program as a child process, and the reader at the other end of its line.
#pragma once

#include "backends/descriptor/descriptor.h"

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace instrument {

/// Far longer than any step takes, however busy the machine is.
inline constexpr std::chrono::seconds Patience{60};

/// Checks a condition every few milliseconds until it holds. Returns false if it does not hold after Patience.
bool Eventually(const std::function<bool()>& holds);

/// A folder for one test, removed at its end.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();
    std::string Path(const std::string& name) const { return Folder_ + "/" + name; }
    const std::string& Name() const { return Folder_; }

private:
    std::string Folder_;
};

bool Exists(const std::string& path);
void WriteFile(const std::string& path, const std::string& bytes);

/// The destructor asks the process to end, and waits for it. A killed instrument would not remove its link. The link
/// would lead to another test's terminal as soon as that gets the same number, and the application would open it.
class RunningInstrument {
public:
    explicit RunningInstrument(const std::vector<std::string>& arguments);
    RunningInstrument(const RunningInstrument&) = delete;
    RunningInstrument& operator=(const RunningInstrument&) = delete;
    ~RunningInstrument();

    /// Waits for the first line of standard output and returns it without its end.
    std::string FirstLine();
    std::string Output() const;
    std::string Errors() const;
    bool SaysPlayed() const { return Errors() == "played\n"; }
    void Signal(int number) const;
    /// Waits for the end. Returns the exit status; -1 if a signal ended the process, or it still runs after Patience.
    int ExitStatus();

private:
    TemporaryFolder Folder_;
    int Process_ = -1;
    int Status_ = -1;
};

/// The slave side of a pseudo terminal, opened as an application opens a port.
class Reader {
public:
    explicit Reader(const std::string& path);
    /// Reads until so many bytes have come, the line has ended, or nothing has come for Patience.
    std::string Read(std::size_t count);
    std::string ReadWhatIsThere();
    void Close() { Line_.Close(); }
    bool IsOpen() const { return Line_.Valid(); }

private:
    backends::Descriptor Line_;
};

} // namespace instrument
