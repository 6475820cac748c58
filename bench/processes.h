// SPDX-License-Identifier: MIT
// Measurements of whole processes.
#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

namespace bench {

/// A program that was started, and pipes to its input and from its output.
struct Child {
    pid_t Process = -1;
    int Input = -1;
    int Output = -1;
};

/// Starts a program, which is searched for as in a shell. Its errors go to this program's standard error. It runs in
/// the C locale, in which no program is slower.
Child Start(const std::vector<std::string>& words);
void Tell(const Child& child, const std::string& text);
/// Reads up to and including the next line feed. At the end of the output, returns what is left.
std::string ReadLine(const Child& child);
/// Closes the pipes and waits for the end. Returns the exit status.
int Finish(Child& child);

/// Runs a program to its end without its output. Returns the seconds from its start to its end, measured by the parent.
/// Stops the benchmark if the program fails.
double SecondsOf(const std::vector<std::string>& words);
/// Runs a program to its end and returns its output.
std::string OutputOf(const std::vector<std::string>& words);

/// Returns the path of a program in the folder of this one.
std::string Beside(const std::string& program);

} // namespace bench
