// SPDX-License-Identifier: MIT
// The bytes come over the serial line in reads of different lengths while a download is open. They are the same text
// wherever they are cut, and nothing in them stops the program.
#include "fuzz/technician.h"

#include "backends/port/serial_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    static const fuzz::Place place;
    const std::string line = fuzz::AsString(bytes, count);
    constexpr std::size_t LongestRead = 61;
    const auto work = [&](fuzz::Technician& technician) {
        for (const char16_t* caption : {u"Start...", u"Ok", u"Open"})
            technician.Choose(caption);
        technician.Tick(600);
        backends::SerialText decoder;
        Text pieces;
        for (std::size_t start = 0, length = 1; start < line.size(); length = length % LongestRead + 1) {
            const Text text = decoder.Decode(std::string_view(line).substr(start, length));
            technician.Receive(text);
            pieces += text;
            start += length;
        }
        fuzz::Must(pieces == backends::SerialText().Decode(line), "another text when it is cut otherwise");
        technician.Tick(1100);
        technician.Choose(u"Next Record");
    };
    fuzz::Run(place, 0, [] { fuzz::PutMeter(place); }, work, {});
    fuzz::Must(place.Bytes("Quorin/meter.txt") == fuzz::InfTable, "a table that was only looked at has changed");
    return 0;
}
