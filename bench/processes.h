// SPDX-License-Identifier: MIT
// Whole processes as a side of a measurement.
#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

namespace bench {

/// A program that was started, with pipes to its input and from its output.
struct Child {
    pid_t Process = -1;
    int Input = -1;
    int Output = -1;
};

/// Starts a program that is looked for as a shell does, its errors going to ours. It sees the C locale: no program is
/// slower in that one.
Child Start(const std::vector<std::string>& words);
void Tell(const Child& child, const std::string& text);
/// Reads up to and including the next line feed; what has come by then at the end of the output.
std::string ReadLine(const Child& child);
/// Closes the pipes and waits for the end. The exit status.
int Finish(Child& child);

/// Runs a program to its end, its output thrown away. The seconds from its start to its end as its parent sees them;
/// stops the benchmark when the program fails.
double SecondsOf(const std::vector<std::string>& words);
/// Runs a program to its end and gives what it printed.
std::string OutputOf(const std::vector<std::string>& words);

/// A program of the folder that this one lies in.
std::string Beside(const std::string& program);

} // namespace bench
