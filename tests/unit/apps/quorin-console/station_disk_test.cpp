// SPDX-License-Identifier: MIT
// A station looks at the free space of its disk.
#include "apps/quorin-console/station.h"
#include "tests/support/program.h"

#include <sstream>

namespace console {
namespace {

using testing::HasSubstr;
using testing::Not;

class DiskOfAStation : public support::Program {
protected:
    DiskOfAStation() {
        InstallMeter();
        Device.Host.settings.Save(u"Quorin", u"Settings", u"ComPort", u"Com1");
        Collector.Space.Find = [this](const std::string& folder) {
            EXPECT_EQ(folder, "/data");
            return Free;
        };
        Collector.Begin();
        Device.Tick(1000);
    }

    std::ostringstream Told;
    Writer Out{Told};
    backends::Ending Ending{Device.Platform};
    std::optional<std::uintmax_t> Free = Station::LeastSpace;
    Station Collector{{.Root = "/data", .Driver = u"Meter"}, Device.Platform, Ending, Out};
};

TEST_F(DiskOfAStation, StopsItBeforeItIsFull) {
    EXPECT_FALSE(Ending.Begun());
    Free = Station::LeastSpace - 1;
    Device.Tick(11000);
    EXPECT_TRUE(Ending.Begun());
    EXPECT_EQ(Collector.Status(), start::ExitStatus::CantStore);
    EXPECT_THAT(Told.str(), HasSubstr("\"stopped\",\"text\":\"the disk of /data is full: less than 5 MB are free\""));
}

TEST_F(DiskOfAStation, OfUnknownSizeDoesNotStopIt) {
    Free.reset();
    Device.Tick(30000);
    EXPECT_FALSE(Ending.Begun());
    EXPECT_THAT(Told.str(), Not(HasSubstr("stopped")));
}

} // namespace
} // namespace console
