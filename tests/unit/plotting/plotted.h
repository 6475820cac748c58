// SPDX-License-Identifier: MIT
// Charts of short tables.
#pragma once

#include "plotting/chart.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace plotting {

inline const std::vector<values::FieldRow> MeterFields = {
    {"Site", "site", values::ColumnKind::Text, true},   {"Moisture", "moisture", values::ColumnKind::Measured, true},
    {"Warmth", "", values::ColumnKind::Measured, true}, {"Day", "", values::ColumnKind::Date, true},
    {"Hour", "", values::ColumnKind::Time, true},       {"Remark", "", values::ColumnKind::Text, true},
};

struct Read {
    std::string Why; ///< empty on success
    plotting::Data Data;
    std::vector<std::string> Odd;
};

inline Read ReadTable(const std::string& table, const Request& request = {},
                      const companion::ValueLimits* limits = nullptr) {
    SeriesReader reader(request, values::DecimalSign::Either, false);
    Read read;
    read.Why = reader.Read({.Name = "Loft", .Bytes = table, .Fields = MeterFields, .Limits = limits});
    if (read.Why.empty())
        read.Why = reader.Finish();
    read.Data = reader.Data();
    read.Odd = reader.Odd();
    return read;
}

template <class Part>
std::vector<Part> PartsOf(const Scene& scene, Role role) {
    std::vector<Part> parts;
    for (const Item& item : scene.Items)
        if (const auto* part = std::get_if<Part>(&item); part != nullptr && part->Stroke.Role == role)
            parts.push_back(*part);
    return parts;
}

inline std::vector<std::string> LabelsOf(const Scene& scene) {
    std::vector<std::string> texts;
    for (const Item& item : scene.Items)
        if (const auto* label = std::get_if<Label>(&item))
            texts.push_back(label->Text);
    return texts;
}

inline Scene Drawn(const std::string& table, Kind kind = Kind::Line, const Request& request = {},
                   const companion::ValueLimits* limits = nullptr) {
    const Read read = ReadTable(table, request, limits);
    EXPECT_EQ(read.Why, "");
    return read.Why.empty() ? Draw(read.Data, kind, PixelLook(960, 540)) : Scene{};
}

} // namespace plotting
