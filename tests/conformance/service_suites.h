// SPDX-License-Identifier: MIT
// The suites of what a device offers without a form: fonts, clock, random numbers. An implementation that is no part of
// a form, such as a fake, joins by instantiating one of them with a factory of its own, as services.cpp does.
#pragma once

#include "src/view/platform/canvas.h"
#include "src/view/platform/device.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>

namespace conformance {

using namespace platform;

/// Makes a new one for each test. The pointer may keep more alive than the object.
template <class Service>
struct ServiceFactory {
    const char* Name;
    std::function<std::shared_ptr<Service>()> Make;
};

template <class Service>
void PrintTo(const ServiceFactory<Service>& factory, std::ostream* out) {
    *out << factory.Name;
}

class FontSuite : public testing::TestWithParam<ServiceFactory<FontServer>> {
protected:
    const std::shared_ptr<FontServer> Fonts = GetParam().Make();
    const FontHandle Font = Fonts->GetFont(u"Tahoma", 9, 0);
};

/// Measuring of text, which a server with one size for all text may leave out.
class TextMeasureSuite : public FontSuite {
protected:
    std::int32_t Lines(const Text& text, std::int32_t width) {
        return Fonts->MeasureWrapped(Font, text, width).Height / Fonts->FontHeight(Font);
    }
    std::int32_t Width(const Text& text) {
        return Fonts->MeasureLine(Font, text, 0, static_cast<std::int32_t>(text.size())).Width;
    }
};

class ClockSuite : public testing::TestWithParam<ServiceFactory<Clock>> {
protected:
    const std::shared_ptr<Clock> Time = GetParam().Make();
};

class RandomSuite : public testing::TestWithParam<ServiceFactory<Random>> {
protected:
    const std::shared_ptr<Random> Numbers = GetParam().Make();
};

} // namespace conformance
