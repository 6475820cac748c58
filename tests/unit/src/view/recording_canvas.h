// SPDX-License-Identifier: MIT
// A canvas that records what is painted on it, one line of text a call.
#pragma once

#include "src/view/platform/canvas.h"

#include <cstdio>
#include <string>
#include <vector>

namespace support {

class RecordingCanvas final : public platform::CellCanvas {
public:
    void SetForeColor(std::int32_t colour) override { Calls.push_back("fore " + Hex(colour)); }
    void SetBackColor(std::int32_t colour) override { Calls.push_back("back " + Hex(colour)); }
    void FrameRect(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) override {
        Calls.push_back("frame" + Numbers({x, y, width, height}));
    }
    void ClearCell() override { Calls.emplace_back("clear"); }
    void DrawLine(std::int32_t x, std::int32_t y, const Text& text) override {
        Calls.push_back("line" + Numbers({x, y}) + " " + modStringTools::ToBytes(text));
    }
    void DrawBox(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, platform::AlignX horizontal,
                 platform::AlignY vertical, const Text& text) override {
        Calls.push_back(
            "box" +
            Numbers({x, y, width, height, static_cast<std::int32_t>(horizontal), static_cast<std::int32_t>(vertical)}) +
            " " + modStringTools::ToBytes(text));
    }

    std::vector<std::string> Calls;

private:
    static std::string Hex(std::int32_t colour) {
        char digits[16];
        std::snprintf(digits, sizeof digits, "%06X", static_cast<unsigned>(colour));
        return digits;
    }
    static std::string Numbers(const std::vector<std::int32_t>& numbers) {
        std::string text;
        for (const std::int32_t number : numbers)
            text += " " + std::to_string(number);
        return text;
    }
};

} // namespace support
