// SPDX-License-Identifier: MIT
#include "apps/quorin-instrument/made_to_order.h"

#include "apps/quorin-instrument/faults.h"

#include <random>
#include <utility>

namespace instrument {

MadeToOrder::MadeToOrder(MadeUpStream stream) {
    for (const ResultKind& kind : stream.Kinds) {
        Names_.push_back(kind.Name);
    }
    stream.Count = 0;
    Source_ = MakeUp(std::move(stream));
    Source_(Introduction_);
    Round_.resize(Names_.size());
}

void MadeToOrder::StartRound() {
    for (std::string& record : Round_) {
        Source_(record);
    }
}

std::string MadeToOrder::One(std::size_t kind) {
    if (Round_[kind].empty()) {
        StartRound();
    }
    return Introduction_ + std::exchange(Round_[kind], {});
}

std::string MadeToOrder::All() {
    StartRound();
    std::string bytes;
    for (std::size_t kind = 0; kind < Round_.size(); ++kind) {
        bytes += One(kind);
    }
    return bytes;
}

std::string MadeToOrder::Next() {
    return One(Turn_++ % Round_.size());
}

std::string MadeToOrder::OfAStranger() {
    const FaultPlan wrong = {.WrongOrigin = 1};
    std::mt19937 unused;
    return Misbehave(One(0), 1, wrong, unused);
}

} // namespace instrument
