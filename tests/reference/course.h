// SPDX-License-Identifier: MIT
// The course of a case that takes several steps.
#pragma once

#include <string>

namespace reference {

/// What was done, step by step, and whether both forms have agreed on all of it so far.
class Course {
public:
    void Note(const std::string& step) { Steps += step + "\n"; }
    void Expect(const std::string& product, const std::string& literal) {
        if (!Same || product == literal)
            return;
        Same = false;
        Note("product: " + product + "\nliteral: " + literal);
    }
    bool Agrees() const { return Same; }
    /// All steps up to where the forms differ; nothing where they agree.
    std::string Difference() const { return Same ? std::string() : Steps; }

private:
    bool Same = true;
    std::string Steps;
};

} // namespace reference
