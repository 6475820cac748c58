// SPDX-License-Identifier: MIT
// The bytes are a table of limits and, in its last line, a value of the column Moisture. A value that is outside has a
// number, and of a table without any column nothing is used.
#include "companion/value_limits.h"
#include "fuzz/technician.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const Text text = modStringTools::FromBytes(fuzz::AsString(bytes, count));
    const Text value = text.substr(text.rfind(u'\n') + 1);
    const companion::ValueLimits limits(text, {u"Moisture"});
    const auto outside = limits.Judge(u"moisture", value);
    fuzz::Must(!outside || companion::NumberOf(value), "a text without a number is outside");
    fuzz::Must(!outside || companion::NumberOf(outside->Limit), "a limit is no number");
    fuzz::Must(!companion::ValueLimits(text, {}).Judge(u"Moisture", value), "a limit of no column is used");
    return 0;
}
