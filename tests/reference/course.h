// SPDX-License-Identifier: MIT
// The course of a case that takes several steps.
#pragma once

#include <string>

namespace reference {

/// What was done, step by step, and whether both forms have agreed on all of it so far.
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
    /// All steps up to where the forms differ; nothing where they agree.
    std::string Difference() const { return Same_ ? std::string() : Steps_; }

private:
    bool Same_ = true;
    std::string Steps_;
};

} // namespace reference
