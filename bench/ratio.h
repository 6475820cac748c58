// SPDX-License-Identifier: MIT
// Measures a piece of the product's work beside a "floor": a program that does the least possible work for the same
// result. Prints a line of JSON for each such pair.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace bench {

/// Does the work once and returns what it took, in the unit of its row. What comes before and after the work, such as
/// the opening of a file, is not in the figure.
using Run = std::function<double()>;

/// How a row's figure is computed from its two sides.
enum class Figure {
    Ratio,      ///< product divided by floor
    Difference, ///< product minus floor
    Product,    ///< the product's alone: there is no floor to run
};

/// What a row must reach.
struct Mark {
    double Limit = 1;
    bool Below = false; ///< true if the figure must be less than the limit
    Figure Of = Figure::Ratio;
    const char* Unit = "s"; ///< of both sides
};

struct Sides {
    Run Product;
    Run Floor;
    Run Tenth{};      ///< the product's work on a tenth of the input, where the input has a size
    Run FloorTenth{}; ///< the floor's on that tenth: a small input may fit into a cache that the whole does not
    std::function<std::string()> Note{}; ///< returns what else to print; called after all runs
};

struct Row {
    const char* Work;
    const char* Floor;
    Mark Reach;
    std::function<Sides(const std::string& folder)> Prepare; ///< makes the input in the folder if it is missing
};

/// Measures each row whose work or floor contains the text `NAME`: `PROGRAM FOLDER [NAME]`. The sides take turns, after
/// one turn that does not count. Returns the exit status: 0, or 1 if the two sides of a row disagree on the result.
int Main(int count, char** words, const std::vector<Row>& rows);

/// Stops the program, because its figure would be wrong.
[[noreturn]] void Fail(const std::string& why);
/// Fails if the two sides have different results.
void MustAgree(const char* what, std::int64_t product, std::int64_t floor);

double Now(); ///< seconds of a monotonic clock
/// Seconds that a piece of work takes.
double Seconds(const std::function<void()>& work);
/// Seconds of one call of a piece of work that is too short for the clock: it is called for a twentieth of a second.
double SecondsOfOne(const std::function<void()>& work);
double Median(std::vector<double> figures);
/// The figure that `percent` of a hundred do not exceed.
double Percentile(std::vector<double> figures, double percent);

/// Keeps the compiler from leaving out work whose result is not used.
template <typename T>
void Keep(const T& value) {
    asm volatile("" : : "r"(&value) : "memory");
}

} // namespace bench
