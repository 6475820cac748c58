// SPDX-License-Identifier: MIT
// Runs the suites of a grid on a GridStore without a form. Derived classes paint it, so the painting suite is left to
// the back-ends.
#include "tests/conformance/grid_suites.h"
#include "tests/unit/backends/grid/grid_under_test.h"

namespace conformance {

namespace {

class StoreUnderTest final : public GridUnderTest {
public:
    StoreUnderTest() {
        Store_.OnMove = [this] { Moved(); };
    }
    StoreUnderTest(const StoreUnderTest&) = delete;
    StoreUnderTest& operator=(const StoreUnderTest&) = delete;

    OwnerDrawGrid& Grid() override { return Store_; }

private:
    backends::RecordingGrid Store_;
};

const GridFactory Store = {"grid store", [] { return std::make_unique<StoreUnderTest>(); }};

} // namespace

INSTANTIATE_TEST_SUITE_P(OnAStore, GridCellsSuite, testing::Values(Store));
INSTANTIATE_TEST_SUITE_P(OnAStore, GridEventsSuite, testing::Values(Store));

} // namespace conformance
