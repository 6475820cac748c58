// SPDX-License-Identifier: MIT
#include "companion/packages.h"

#include "src/drivers/installation.h"
#include "src/drivers/registry.h"
#include "src/storage/settings.h"
#include "tests/support/program.h"

namespace companion {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string Climate = "# a comment\nClimate|climate.txt\nFIELDNAME\n";

Package Made(const std::string& bytes = Climate, const Text& name = u"climate.qvd") {
    Package package;
    EXPECT_EQ(TakePackage(name, bytes, package), u"");
    return package;
}

TEST(BytesOfAPackage, AreReadAsTheDeviceReadsATextFile) {
    EXPECT_THAT(Made("\xEF\xBB\xBF"
                     "A|a.txt\r\n\r\nx\xFF")
                    .Lines,
                ElementsAre(u"A|a.txt", u"", modStringTools::FromBytes("x\xFF")));
}

TEST(BytesOfAPackage, AreNoneWithoutADriver) {
    Package package;
    const Text none = u"x.qvd is no driver package: its first line that is no comment must have a driver's name, \"|\" "
                      u"and the name of a file.";
    for (const std::string& bytes : {std::string(), std::string("# only a comment\n"), std::string("no bar\nA|a.txt\n"),
                                     std::string("A|a.txt\nbinary \0", 16)})
        EXPECT_EQ(TakePackage(u"x.qvd", bytes, package), none) << bytes;
}

TEST(BytesOfAPackage, AreNoneAboveAMegabyte) {
    Package package;
    const std::string row = "A|a.txt\n";
    EXPECT_EQ(TakePackage(u"x.qvd", row + std::string(LargestPackage - row.size(), 'x'), package), u"");
    EXPECT_EQ(TakePackage(u"x.qvd", row + std::string(LargestPackage, 'x'), package),
              u"x.qvd is too long for a driver package: more than 1 MB.");
}

class PackageFolder : public support::Program {
protected:
    explicit PackageFolder(const backends::DeviceOptions& options = {}) : support::Program(options) {}
    std::vector<Text> Listed() {
        modQuorin::EnumAddDrivers();
        return modQuorin::Registry.DriverNames;
    }
};

TEST_F(PackageFolder, GetsAPackageUnderItsName) {
    EXPECT_EQ(PlaceOf(Made()).There, Presence::None);
    EXPECT_EQ(PutPackage(Made()), u"");
    EXPECT_EQ(File("climate.qvd"), Climate);
    EXPECT_THAT(Listed(), ElementsAre(PlaceOf(Made()).FullName));
}

TEST_F(PackageFolder, HasTheSameOneOrAnother) {
    Put("climate.qvd", Climate);
    EXPECT_EQ(PlaceOf(Made()).There, Presence::Same);
    EXPECT_EQ(PlaceOf(Made("# a comment\r\nClimate|climate.txt\r\nFIELDNAME")).There, Presence::Same)
        << "but line ends";
    EXPECT_EQ(PlaceOf(Made("Climate|climate.txt\n")).There, Presence::Other);
    Put("climate.qvd", "");
    EXPECT_EQ(PlaceOf(Made()).There, Presence::None) << "nothing is lost with an empty file";
}

TEST_F(PackageFolder, GetsOddNamesAsItsListShowsThem) {
    for (const Text& name :
         {Text(u"a|b.qvd"), Text(u"a\\b.QVD"), Text(u".qvd"), Text(u"...qvd"), modStringTools::FromBytes("\xFF.qvd")}) {
        std::filesystem::remove_all(Device.Folder.Path() / "Quorin");
        EXPECT_EQ(PutPackage(Made(Climate, name)), u"") << modStringTools::ToBytes(name);
        EXPECT_THAT(Listed(), ElementsAre(PlaceOf(Made(Climate, name)).FullName));
    }
}

TEST_F(PackageFolder, SaysWhyItGetsNone) {
    const Text failed = PutPackage(Made(Climate, Text(300, u'x') + u".qvd"));
    EXPECT_THAT(modStringTools::ToBytes(failed), testing::HasSubstr("xx.qvd can't be put into the data folder: "));
    Device.Host.faults.FailNext(-1);
    EXPECT_EQ(PutPackage(Made()), u"climate.qvd can't be put into the data folder: the disk is full.");
    Device.Host.faults.FailNext(0);
    EXPECT_THAT(Listed(), IsEmpty());
    EXPECT_THAT(Device.Did.Unsaved, IsEmpty()) << "it is told once";
}

TEST_F(PackageFolder, SaysThatAFolderHasTheName) {
    std::filesystem::create_directories(Device.Folder.Path() / "Quorin/climate.qvd");
    EXPECT_EQ(PutPackage(Made()), u"climate.qvd can't be put into the data folder: the name is not allowed.");
}

class PackageMemory : public PackageFolder {
protected:
    PackageMemory() : PackageFolder(support::OfType(1)) {}
};

TEST_F(PackageMemory, GetsAPackageAsADatabase) {
    EXPECT_EQ(PutPackage(Made()), u"");
    EXPECT_THAT(Listed(), ElementsAre(u"Device:\\climateqvd"));
    EXPECT_EQ(PlaceOf(Made()).FullName, u"Device:\\climateqvd");
    EXPECT_EQ(PlaceOf(Made()).There, Presence::Same);
    EXPECT_EQ(PlaceOf(Made("Climate|climate.txt\n")).There, Presence::Other);
}

} // namespace
} // namespace companion
