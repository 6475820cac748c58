// SPDX-License-Identifier: MIT
// Measures a piece of the product's work side by side with the least that the machine could do it for, and prints a
// line of JSON for each such pair.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace bench {

/// Does the work once and gives what it took, in the unit of its row. What comes before and after the work, such as
/// the opening of a file, is not in the figure.
using Run = std::function<double()>;

/// How a row's figure comes out of its two sides.
enum class Figure {
    Ratio,      ///< product by floor
    Difference, ///< product less floor
    Product,    ///< the product's alone: there is no floor to run
};

/// What a row must reach.
struct Mark {
    double Limit = 1;
    bool Below = false; ///< the limit itself is too much
    Figure Of = Figure::Ratio;
    const char* Unit = "s"; ///< of both sides
};

struct Sides {
    Run Product;
    Run Floor;
    Run Tenth{};      ///< the product's work on a tenth of the input, where the input has a size
    Run FloorTenth{}; ///< the floor's on that tenth: a small input may fit into a cache that the whole does not
    std::function<std::string()> Note{}; ///< what else is to be told, asked when all runs are done
};

struct Row {
    const char* Work;
    const char* Floor;
    Mark Reach;
    std::function<Sides(const std::string& folder)> Prepare; ///< makes the input in the folder, if it is not there yet
};

/// Measures each row whose work or floor has the text `NAME` in it: `PROGRAM FOLDER [NAME]`. The sides take turns,
/// after one turn that does not count. Exit status 0, or 1 when the two sides of a row disagree on the result.
int Main(int count, char** words, const std::vector<Row>& rows);

/// Stops the program: a figure would be worth nothing.
[[noreturn]] void Fail(const std::string& why);
/// Fails where the two sides have not found the same.
void MustAgree(const char* what, std::int64_t product, std::int64_t floor);

double Now(); ///< seconds of a clock that never goes back
/// Seconds that a piece of work takes.
double Seconds(const std::function<void()>& work);
/// Seconds of one call of a piece of work that is too short for the clock: it is called for a twentieth of a second.
double SecondsOfOne(const std::function<void()>& work);
double Median(std::vector<double> figures);
/// The figure that so many of a hundred do not exceed.
double Percentile(std::vector<double> figures, double percent);

/// Keeps the compiler from leaving out work whose result nobody looks at.
template <typename T>
void Keep(const T& value) {
    asm volatile("" : : "r"(&value) : "memory");
}

} // namespace bench
