// SPDX-License-Identifier: MIT
// Waits for tables to change, until a person ends the program.
#pragma once

#include <string>
#include <tuple>
#include <vector>

namespace exporter {

class Watching {
public:
    /// From now on Ctrl+C and SIGTERM end the waiting, not the program.
    Watching();

    /// Notes how the files are, which must be called before they are read.
    void Note(const std::vector<std::string>& paths);
    /// Returns true once a file is another one than was noted, or has another size or time: a table is replaced as a
    /// whole, other programs append to a file. Returns false once the program is to end.
    bool WaitForChange() const;

private:
    /// Device, number, size, and time in seconds and nanoseconds; all -1 for a file that is not there.
    using State = std::tuple<long long, long long, long long, long long, long long>;
    static State StateOf(const std::string& path);

    std::vector<std::string> Paths_;
    std::vector<State> States_; ///< of the paths, same index
};

} // namespace exporter
