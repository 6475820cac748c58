// SPDX-License-Identifier: MIT
// The samples fit together: the driver has a field for each item of the recording, and the download is the driver's.
#include "tests/unit/apps/quorin-instrument/instrument_support.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace instrument {
namespace {

std::vector<std::string> SplitAt(std::string text, char mark) {
    std::vector<std::string> parts(1);
    for (const char c : text) {
        if (c == mark) {
            parts.emplace_back();
        } else {
            parts.back() += c;
        }
    }
    return parts;
}

class Samples : public testing::Test {
protected:
    void SetUp() override {
        const std::string package = Sample("climate.qvd");
        for (const std::string_view line : LinesOf(package)) {
            if (line.front() != '#') {
                Counted.emplace_back(line.substr(0, line.size() - 1));
            }
        }
        ASSERT_GT(Counted.size(), 2u);
    }

    /// Returns a column of the inf rows, by its index in the header.
    std::vector<std::string> Column(std::size_t index) const {
        std::vector<std::string> values;
        for (std::size_t i = 2; i < Counted.size(); ++i) {
            values.push_back(SplitAt(Counted[i], '|').at(index));
        }
        return values;
    }

    std::vector<std::string> Counted; ///< the package's lines without comments and line ends
};

constexpr std::size_t FieldName = 0;
constexpr std::size_t Visible = 1;
constexpr std::size_t Copy = 2;
constexpr std::size_t Blob = 3;
constexpr std::size_t Display = 4;
constexpr std::size_t DataType = 6;
constexpr std::size_t Formula = 7;

TEST_F(Samples, PackageHoldsItsRowThenTheInfHeader) {
    EXPECT_EQ(Counted[0], "Climate Meter|climate.txt");
    EXPECT_EQ(Counted[1], "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA");
}

TEST_F(Samples, EachInfRowHasEightFields) {
    for (std::size_t i = 2; i < Counted.size(); ++i) {
        EXPECT_EQ(SplitAt(Counted[i], '|').size(), 8u) << Counted[i];
    }
}

/// The screen with a driver's name uses the fields of the download that was open last. If the first of them were dates,
/// editing a name would end the program.
TEST_F(Samples, PackageBeginsWithTwoPlainFields) {
    for (std::size_t row = 0; row < 2; ++row) {
        EXPECT_EQ(Column(Visible).at(row), "1");
        EXPECT_EQ(Column(DataType).at(row), "");
    }
}

TEST_F(Samples, PackageShowsWhatADriverCanDo) {
    using testing::Contains;
    EXPECT_THAT(Column(Visible), Contains("0"));
    EXPECT_THAT(Column(Copy), Contains("1"));
    EXPECT_THAT(Column(Blob), Contains("dv: ORIGIN"));
    EXPECT_THAT(Column(Blob), Contains(testing::StartsWith("dv: {")));
    EXPECT_THAT(Column(Display), Contains(testing::Not("")));
    EXPECT_THAT(Column(DataType), testing::IsSupersetOf({"DATE", "TIME"}));
    EXPECT_THAT(Column(Formula), testing::IsSupersetOf({"startdate", "starttime", "enddate", "endtime"}));
}

TEST_F(Samples, ColoursAreNumbersThatFitInAPixel) {
    for (const std::string& colour : Column(Display)) {
        EXPECT_EQ(colour.find_first_not_of("0123456789"), std::string::npos) << colour;
        EXPECT_LE(colour.empty() ? 0 : std::stol(colour), 0xFFFFFF);
    }
}

TEST_F(Samples, DriverHasAFieldForAllThatTheRecordingSends) {
    const auto fields = Column(Blob);
    for (const std::string& record : RecordsOf(Recording(Sample("climate.stream")))) {
        for (const std::string_view line : LinesOf(record)) {
            const std::string value =
                SplitAt(std::string(line), '"').size() > 1 ? SplitAt(std::string(line), '"')[1] : "";
            if (BeginsWithTag(line, "[RESULT_TYPE")) {
                EXPECT_THAT(fields, testing::Contains(value));
            }
            if (BeginsWithTag(line, "[DESCRIPTIVE_VAR")) {
                EXPECT_THAT(fields, testing::Contains("dv: " + value.substr(0, value.find('='))));
            }
        }
    }
}

TEST_F(Samples, RecordingIsTheMadeUpStreamThatItsPageNames) {
    MadeUpStream stream;
    stream.Kinds = ClimateKinds();
    stream.Count = 6;
    stream.Seed = 6;
    EXPECT_EQ(RecordsOf(Recording(Sample("climate.stream"))), RecordsOf(MakeUp(stream)));
}

TEST_F(Samples, DownloadHasTheDriversColumnsInEachRow) {
    const std::string download = Sample("download.txt");
    const auto lines = LinesOf(download);
    ASSERT_EQ(lines.size(), 3u);
    for (const std::string_view line : lines) {
        EXPECT_EQ(SplitAt(std::string(line), '|').size(), Column(FieldName).size());
    }
    EXPECT_EQ(SplitAt(std::string(lines[0].substr(0, lines[0].size() - 1)), '|'), Column(FieldName));
}

TEST_F(Samples, DownloadHoldsTheValuesOfTheRecording) {
    const std::string download = Sample("download.txt");
    for (const std::string& record : RecordsOf(Recording(Sample("climate.stream")))) {
        if (!IsConnectRecord(record)) {
            const std::string value = SplitAt(LineWith(record, "[RESULT_VALUE"), '"')[1];
            const std::string unit = SplitAt(LineWith(record, "[RESULT_UNIT"), '"')[1];
            EXPECT_THAT(download, testing::HasSubstr("|" + value + " " + unit + "|"));
        }
    }
}

} // namespace
} // namespace instrument
