// SPDX-License-Identifier: MIT
// Records what a device reports of readings and rows. Declare it after the device.
#pragma once

#include "tests/support/test_device.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace support {

struct HeardReadings final : platform::ReadingLog {
    explicit HeardReadings(TestDevice& device) { device.Platform.readings.Add(*this); }

    std::vector<std::pair<platform::TextSource, Text>> Texts;
    std::vector<Text> Emptied;
    std::vector<platform::Verdict> Verdicts;
    std::vector<platform::RowChange> Rows;
    std::function<void()> AtText;     ///< called when text is reported
    std::function<void()> AtDecoding; ///< called when a batch is about to be decoded

    void TextReceived(platform::TextSource source, TextView characters) override {
        Texts.emplace_back(source, characters);
        if (AtText)
            AtText();
    }
    void DecodingBegins() override {
        if (AtDecoding)
            AtDecoding();
    }
    void TextEmptied(TextView characters) override { Emptied.emplace_back(characters); }
    void ReadingJudged(const platform::Verdict& verdict) override { Verdicts.push_back(verdict); }
    void RowChanged(const platform::RowChange& change) override { Rows.push_back(change); }

    /// Returns lines such as "saved t.txt 2: a|b -> c|b", with " failed: why" after a save that failed.
    std::vector<std::string> RowLines() const {
        std::vector<std::string> lines;
        for (const platform::RowChange& change : Rows) {
            static const char* const names[] = {"saved ", "added ", "deleted "};
            const Text line = change.File + u" " + modStringTools::NumberText(change.Row) + u": " + change.OldLine +
                              u" -> " + change.NewLine + (change.Why.empty() ? u"" : u" failed: ") + change.Why;
            lines.push_back(names[static_cast<std::size_t>(change.Event)] + modStringTools::ToBytes(line));
        }
        return lines;
    }
};

} // namespace support
