// SPDX-License-Identifier: MIT
// Results that are made one by one, as they are asked for.
#pragma once

#include "apps/quorin-instrument/stream.h"

#include <cstddef>
#include <string>
#include <vector>

namespace instrument {

/// Each text that it returns begins with an introduction. With a single one at the start, a listener that closes its
/// port in the middle of it would refuse every result from then on.
class MadeToOrder {
public:
    /// The stream's count does not matter.
    explicit MadeToOrder(MadeUpStream stream);

    /// Returns the names of the kinds; a kind is its place in this list.
    const std::vector<std::string>& Names() const { return Names_; }

    std::string One(std::size_t kind);
    /// Returns one result of each kind.
    std::string All();
    /// Returns the kinds in turn.
    std::string Next();
    /// Returns a result of an instrument that has not introduced itself, which a listener refuses.
    std::string OfAStranger();

private:
    void StartRound();

    RecordSource Source_;
    std::string Introduction_;
    std::vector<std::string> Names_;
    /// A result of each kind, measured at one place by one person; empty for those that were taken. A second result of
    /// a kind is measured at the next place.
    std::vector<std::string> Round_;
    std::size_t Turn_ = 0;
};

} // namespace instrument
