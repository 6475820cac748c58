// SPDX-License-Identifier: MIT
// What the check takes a package for is what the form makes of it.
#include "companion/driver_package.h"
#include "companion/file_lines.h"
#include "companion/recording_check.h"
#include "src/blob/capture.h"
#include "src/drivers/installation.h"
#include "tests/support/program.h"

namespace companion {
namespace {

class PackageInTheForm : public support::Program {
protected:
    /// Installs a package whose driver is called Meter, and opens a download of it.
    void Open(const Text& package) {
        Put("drivers.txt", "NAME|INFFILE\n");
        Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n");
        EXPECT_TRUE(modQuorin::InstallLines(LinesOf(package)));
        for (const char16_t* command : {u"Start...", u"Ok", u"Open"})
            modQuorin::MenuEvent(command);
        Settle();
        EXPECT_EQ(Screen(), modQuorin::ScrInfRecord);
    }
};

const Text OddPackage =
    u"# by hand\r\n\r\nMeter|meter.txt\r\nblob|DATATYPE|FieldName|VISIBLE|x|FORMULA|COPY|visible|DISPLAY\r\n"
    u"Moisture|date|A|1||StartDate|1|0| 255 \r\n# between\r\n"
    u"dv: {Moisture}Site|TIME|B|yes|||true|1|\r\ndv: Site||C|1||||1|-1|more\r\n|Date|D|||||||\r\n\r\n";

TEST_F(PackageInTheForm, HasTheFieldsThatTheCheckTakesItToHave) {
    Open(OddPackage);
    const std::vector<modQuorin::InfField>& form = modQuorin::Inf.InfFields;
    const std::vector<modQuorin::InfField> check = FieldsOf(ReadPackage(LinesOf(OddPackage)));
    ASSERT_EQ(form.size(), 4U);
    ASSERT_EQ(check.size(), form.size());
    for (std::size_t i = 0; i < form.size(); ++i) {
        EXPECT_EQ(check[i].FieldName, form[i].FieldName) << i;
        EXPECT_EQ(check[i].Visible, form[i].Visible) << i;
        EXPECT_EQ(check[i].Copy, form[i].Copy) << i;
        EXPECT_EQ(check[i].Blob, form[i].Blob) << i;
        EXPECT_EQ(check[i].Display, form[i].Display) << i;
        EXPECT_EQ(check[i].DataType, form[i].DataType) << i;
        EXPECT_EQ(check[i].Formula, form[i].Formula) << i;
    }
}

TEST_F(PackageInTheForm, FillsTheFieldsThatTheCheckNames) {
    const Text recording = u"[BLob]\r\n[DESCRIPTIVE_VAR \"Site=Loft\"]\r\n[RESULT_TYPE \"M1\" \"Moisture\"]\r\n"
                           u"[RESULT_VALUE \"14.1\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n";
    const auto kinds = DestinationsOf(ReadPackage(LinesOf(OddPackage)), ResultsOf(recording));
    ASSERT_EQ(kinds.size(), 1U);
    EXPECT_EQ(WordsOf(kinds.front()), u"M1, Moisture: 1 result such as 14.1 % → A; Site → B");
    Open(OddPackage);
    modBLob::ProcessReceivedText(recording);
    EXPECT_EQ(Column(1), (std::vector<Text>{u"14.1 %", u"Loft", u"", u""}));
}

} // namespace
} // namespace companion
