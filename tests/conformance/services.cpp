// SPDX-License-Identifier: MIT
// Runs the suites of services on those that do not belong to a form: the machine's clock, and the random numbers of the
// comparisons in tests/reference.
#include "backends/host/host_clock.h"
#include "tests/conformance/service_suites.h"
#include "tests/reference/storage_device.h"

namespace conformance {

namespace {

const ServiceFactory<Clock> OfTheMachine = {
    "clock of the machine", [] { return std::make_shared<backends::DeviceClock>(backends::HostTime()); }};
const ServiceFactory<Random> Quick = {"quick numbers", [] { return std::make_shared<reference::QuickNumbers>(); }};

} // namespace

INSTANTIATE_TEST_SUITE_P(OfTheMachine, ClockSuite, testing::Values(OfTheMachine));
INSTANTIATE_TEST_SUITE_P(OfComparisons, RandomSuite, testing::Values(Quick));

} // namespace conformance
