// SPDX-License-Identifier: MIT
// The steps of a case, and whether both forms agree.
#pragma once

#include <string>

namespace reference {

/// Records the steps of a case until both forms differ.
class Course {
public:
    void Note(const std::string& step) { Steps_ += step + "\n"; }
    void Expect(const std::string& product, const std::string& literal) {
        if (!Same_ || product == literal)
            return;
        Same_ = false;
        Note("product: " + product + "\nliteral: " + literal);
    }
    bool Agrees() const { return Same_; }
    /// Returns all steps and the difference; empty if the forms agree.
    std::string Difference() const { return Same_ ? std::string() : Steps_; }

private:
    bool Same_ = true;
    std::string Steps_;
};

} // namespace reference
