// SPDX-License-Identifier: MIT
// A person brings files to the page, and takes others with them.
#include "apps/page_exchange/page_exchange.h"

#include "apps/arrivals/sample_driver.h"
#include "tests/unit/backends/web/page_device.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace apps {
namespace {

using backends::web::PageDevice;
using testing::Contains;
using testing::HasSubstr;
using testing::StartsWith;
using Json = journal::Line;

/// As the page sends bytes.
std::string Base64(std::string_view bytes) {
    static constexpr std::string_view Characters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::uint32_t bits = 0;
        for (std::size_t k = 0; k < 3; ++k)
            bits = bits << 8 | (i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0U);
        for (std::size_t k = 0; k < 4; ++k)
            text += k <= bytes.size() - i ? Characters[bits >> (18 - 6 * k) & 63] : '=';
    }
    return text;
}

struct Given {
    Json About;
    std::string Bytes;
};

class AtThePage : public testing::Test {
protected:
    void SetUp() override {
        Device.PutDriver();
        Begin();
    }
    /// The form's own boxes are answered as they open.
    void Begin() {
        Exchange.Says = [this](const std::string& said) { Hear(Json::parse(said)); };
        Exchange.Gives = [this](const std::string& about, const std::string& bytes) {
            Last = {Json::parse(about), bytes};
        };
        Device.Events->Raised = [this](const backends::web::PageEvent& event) {
            if (!Exchange.Take(event))
                Device.Hand.Do(event);
        };
        Device.Platform.Changed = [this, shown = Device.Platform.Changed](const std::string& mirror) {
            shown(mirror);
            if (const Json& box = Device.Seen()["box"]; !box.is_null())
                Device.Write({Json({{"kind", "answer"}, {"box", box["id"]}, {"yes", false}}).dump()});
        };
        Device.Start();
        Step();
    }
    void Hear(const Json& said) {
        if (said.contains("want"))
            Wants.push_back(said);
        else
            State = said;
    }
    /// Lets the program go on until it asks for nothing more of a file.
    void Step() {
        for (int i = 0; i < 8; ++i) {
            Exchange.Step();
            Device.Send({});
        }
    }
    void Send(const Json& act) {
        Device.Send({act.dump()});
        Step();
    }
    void Choose(const std::string& caption) {
        Device.Choose(caption);
        Step();
    }
    void OpenRecord() {
        Device.OpenRecord();
        Step();
    }
    void GoHome() {
        for (const char* const caption : {"Close", "Back", "Back"})
            Choose(caption);
    }
    /// Gives a file, in as many parts as it is asked for.
    void GiveFile(const std::string& name, const std::string& bytes, const std::string& use = "") {
        Wants.clear();
        Device.Send(
            {Json({{"kind", "file"}, {"item", 7}, {"words", name}, {"bytes", bytes.size()}, {"data", use}}).dump()});
        for (std::size_t i = 0; i < Wants.size(); ++i) {
            const auto at = Wants[i]["at"].get<std::size_t>(), count = Wants[i]["count"].get<std::size_t>();
            Device.Send({Json({{"kind", "part"}, {"item", 7}, {"data", Base64(bytes.substr(at, count))}}).dump()});
        }
        Step();
    }
    void Answer(bool yes) { Send({{"kind", "reply"}, {"item", State["dialog"]["id"]}, {"yes", yes}}); }
    std::string Told() const { return State["dialog"].is_null() ? "" : State["dialog"]["words"].get<std::string>(); }
    const Given& Ask(const std::string& format) {
        Send({{"kind", "give"}, {"item", ++Requests}, {"data", format}});
        return Last;
    }
    /// Returns the words of the notices that the page shows.
    std::vector<std::string> Notices() const {
        std::vector<std::string> words;
        for (const Json& notice : Device.Seen()["notices"])
            words.push_back(notice["text"]);
        return words;
    }

    PageDevice Device;
    support::TemporaryFolder Scratch;
    PageExchange Exchange{Device.Platform, {Device.Folder.Path().string(), (Scratch.Path() / "on its way").string()}};
    std::vector<Json> Wants;
    Json State;
    Given Last;
    int Requests = 0;
};

class AtAnEmptyPage : public AtThePage {
protected:
    void SetUp() override { Begin(); }
};

// --- drivers ---------------------------------------------------------------------------------------------------------

TEST_F(AtThePage, APackageInPartsIsInstalled) {
    std::string package(apps::SampleDriver());
    while (package.size() < std::size_t{3} * ArrivingFiles::PartSize)
        package += "# a remark\n";
    GiveFile("climate.qvd", package, "driver");
    EXPECT_GE(Wants.size(), 3U);
    EXPECT_THAT(Device.Folder.Bytes("Quorin/drivers.txt"), HasSubstr("Climate Meter|"));
    EXPECT_EQ(Device.Folder.Bytes("Quorin/climate.qvd"), package);
}

TEST_F(AtAnEmptyPage, TheSampleIsOfferedUntilThereIsADriver) {
    EXPECT_THAT(Notices(), Contains("No driver is installed yet."));
    EXPECT_EQ(State["driver"], false);
    Send({{"kind", "offer"}, {"words", "sample"}});
    EXPECT_THAT(Device.Folder.Bytes("Quorin/drivers.txt"), HasSubstr("Climate Meter|"));
    EXPECT_THAT(Notices(), testing::Not(Contains("No driver is installed yet.")));
    EXPECT_EQ(State["driver"], true);
}

TEST_F(AtAnEmptyPage, TheOfferOfTheSampleCanBeDismissed) {
    Send({{"kind", "offer"}, {"words", "nohints"}});
    EXPECT_THAT(Notices(), testing::Not(Contains("No driver is installed yet.")));
}

TEST_F(AtThePage, AFileThatIsTooLargeIsNotAskedFor) {
    Send({{"kind", "file"}, {"item", 7}, {"words", "large.qvd"}, {"bytes", 100'000'000}, {"data", "driver"}});
    EXPECT_EQ(Told(), "large.qvd is too long for a driver package: more than 1 MB.");
    Answer(true);
    Send({{"kind", "file"}, {"item", 8}, {"words", "large.zip"}, {"bytes", 5'000'000'000}, {"data", "zip"}});
    EXPECT_EQ(Told(), "large.zip is too large for a page: more than 256 MB.");
    EXPECT_TRUE(Wants.empty());
}

TEST_F(AtThePage, AFileWithAnotherNameIsNoDriver) {
    GiveFile("driver.txt", std::string(apps::SampleDriver()), "driver");
    EXPECT_THAT(Told(), StartsWith("driver.txt is no driver package: its name"));
    EXPECT_THAT(Device.Folder.Bytes("Quorin/drivers.txt"), testing::Not(HasSubstr("Climate")));
}

TEST_F(AtThePage, OnlyTheAnswerToTheOpenDialogCounts) {
    GiveFile("bad.qvd", "Bad|bad.txt\nFIELDNAME|VISIBLE\nPlace|1\n", "driver");
    ASSERT_TRUE(State["dialog"]["asks"]);
    const int asked = State["dialog"]["id"];
    Send({{"kind", "reply"}, {"item", asked - 1}, {"yes", true}});
    EXPECT_EQ(State["dialog"]["id"], asked);
    Answer(false);
    EXPECT_TRUE(State["dialog"].is_null());
    EXPECT_FALSE(Device.Folder.Has("Quorin/bad.qvd"));
}

TEST_F(AtThePage, ADriverWaitsForTheRecord) {
    OpenRecord();
    GiveFile("climate.qvd", std::string(apps::SampleDriver()));
    EXPECT_EQ(State["offer"], "Install climate.qvd when this record is done.");
    EXPECT_FALSE(Device.Folder.Has("Quorin/climate.qvd"));
    Send({{"kind", "offer"}, {"words", "notnow"}});
    EXPECT_EQ(State["offer"], "");
    GoHome();
    EXPECT_FALSE(Device.Folder.Has("Quorin/climate.qvd"));
}

// --- the data as a zip file ------------------------------------------------------------------------------------------

TEST_F(AtThePage, TheZipComesInOnAnotherDevice) {
    Device.Folder.Put("Quorin/qrn0001.txt", "Place|Count\nwall|7\n");
    const Given zip = Ask("zip");
    EXPECT_EQ(zip.About["why"], "");
    EXPECT_EQ(zip.About["words"], "1 record in 4 files");
    EXPECT_EQ(zip.About["name"], "quorin-20070305.zip");
    Device.Folder.Put("Quorin/qrn0001.txt", "Place|Count\n");
    GiveFile("data.zip", zip.Bytes);
    EXPECT_THAT(Told(), StartsWith("1 files of data.zip taken in"));
    EXPECT_EQ(Device.Folder.Bytes("Quorin/qrn0001.txt"), "Place|Count\nwall|7\n");
}

TEST_F(AtThePage, ADifferenceIsToldInFull) {
    Device.Folder.Put("Quorin/qrn0001.txt", "Place|Count\nwall|7\n");
    const Given zip = Ask("zip");
    Device.Folder.Put("Quorin/qrn0001.txt", "Place|Count\nfloor|7\n");
    GiveFile("data.zip", zip.Bytes);
    EXPECT_THAT(Told(), HasSubstr("qrn0001.txt, record 1 differs\n  here: floor|7\n  zip:  wall|7"));
    EXPECT_THAT(Told(), HasSubstr("1 records differ from those here, which stay: keep data.zip"));
    EXPECT_EQ(Device.Folder.Bytes("Quorin/qrn0001.txt"), "Place|Count\nfloor|7\n");
}

TEST_F(AtThePage, ABadZipChangesNothing) {
    const std::string before = Device.Folder.Bytes("Quorin/qrnctrl.txt");
    GiveFile("data.zip", "no zip at all");
    EXPECT_EQ(State["dialog"]["title"], "Nothing is taken in.");
    EXPECT_THAT(Told(), StartsWith("nothing is taken in. data.zip can't be taken in"));
    EXPECT_EQ(Device.Folder.Bytes("Quorin/qrnctrl.txt"), before);
}

TEST_F(AtThePage, AZipWaitsForTheRecord) {
    const Given zip = Ask("zip");
    OpenRecord();
    GiveFile("data.zip", zip.Bytes);
    EXPECT_EQ(State["offer"], "Take in data.zip when this record is done.");
    EXPECT_EQ(Ask("zip").About["why"], "The data can be handed over when this record is done.");
    Choose("Close");
    Choose("Back"); // from the list of drivers the form is led
    EXPECT_THAT(Told(), HasSubstr("of data.zip taken in"));
}

TEST_F(AtThePage, WhatIsNewIsOfferedUntilItIsHandedOver) {
    Device.Folder.Put("Quorin/qrn0001.txt", "Place|Count\nwall|7\n");
    OpenRecord();
    EXPECT_THAT(Notices(), testing::Not(Contains(HasSubstr("handed over"))));
    GoHome();
    EXPECT_THAT(Notices(), Contains("1 record is not handed over. It is in this browser alone."));
    Ask("zip");
    EXPECT_THAT(Notices(), Contains(HasSubstr("handed over"))); // the person has not saved it yet
    Send({{"kind", "saved"}, {"item", Requests}});
    EXPECT_THAT(Notices(), testing::Not(Contains(HasSubstr("handed over"))));
    Device.Folder.Put("Quorin/qrn0001.txt", "Place|Count\nwall|7\nfloor|8\nroof|9\n");
    OpenRecord();
    GoHome();
    EXPECT_THAT(Notices(), Contains("2 records are not handed over. They are in this browser alone."));
}

TEST_F(AtThePage, ASavedDownloadIsNoHandOver) {
    Device.Folder.Put("Quorin/qrn0001.txt", "Place|Count\nwall|7\n");
    Ask("zip"); // which the person does not save
    OpenRecord();
    Ask("csv");
    Send({{"kind", "saved"}, {"item", Requests}});
    GoHome();
    EXPECT_THAT(Notices(), Contains(HasSubstr("1 record is not handed over.")));
}

// --- downloads -------------------------------------------------------------------------------------------------------

TEST_F(AtThePage, AnOpenDownloadIsGivenAndStaysOpen) {
    Device.Folder.Put("Quorin/qrn0001.txt", "Place|Count\n\"wall\", north|7\n");
    EXPECT_EQ(State["download"], "");
    EXPECT_EQ(Ask("csv").About["why"], "No download was opened yet.");
    OpenRecord();
    EXPECT_EQ(State["download"], "qrn0001");
    EXPECT_EQ(Ask("csv").Bytes, "Place,Count\r\n\"\"\"wall\"\", north\",7\r\n");
    EXPECT_EQ(Last.About["name"], "qrn0001.csv");
    EXPECT_EQ(Ask("table").Bytes, "Place|Count\n\"wall\", north|7\n");
    Choose("New Record");
    EXPECT_THAT(Device.Texts(), Contains("2/2"));
    GoHome();
    EXPECT_EQ(State["download"], "qrn0001");
    EXPECT_THAT(Ask("table").Bytes, HasSubstr("\n|\n"));
}

TEST_F(AtThePage, WhyThereIsNoPlotIsSaid) {
    OpenRecord();
    EXPECT_NE(Ask("svg").About["why"], "");
    EXPECT_EQ(Last.Bytes, "");
}

} // namespace
} // namespace apps
