// SPDX-License-Identifier: MIT
#include "backends/files/plain_file.h"

#include "tests/support/temporary_root.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <sys/stat.h>

namespace backends {
namespace {

class PlainFiles : public testing::Test {
protected:
    PlainFile Read(const std::string& name, Links links = Links::Follow) const {
        return ReadPlainFile(Folder.Path(name), 1'000'000, links);
    }

    const TemporaryRoot Folder;
};

TEST_F(PlainFiles, AreReadWholeWithoutAMark) {
    Folder.Put("file", std::string("\xEF\xBB\xBF") + "a\r\n" + std::string(200'000, 'x'));
    const PlainFile file = Read("file");
    EXPECT_EQ(file.Why, "");
    EXPECT_EQ(file.Bytes, "a\r\n" + std::string(200'000, 'x'));
    Folder.Put("empty", "");
    EXPECT_EQ(Read("empty").Why, "");
}

TEST_F(PlainFiles, AreNotReadIfTheyAreLargerThanAllowed) {
    Folder.Put("file", std::string(1'000'000, 'x'));
    EXPECT_EQ(Read("file").Why, "");
    Folder.Put("file", std::string(1'000'001, 'x'));
    EXPECT_EQ(Read("file").Why, "it is larger than 1 MB");
    EXPECT_EQ(Read("file").Bytes, "");
}

TEST_F(PlainFiles, AreToldFromOtherThings) {
    Folder.Put("folder/inside", "");
    ASSERT_EQ(::mkfifo(Folder.Path("pipe").c_str(), 0600), 0);
    EXPECT_EQ(Read("folder").Why, "it is a folder");
    EXPECT_EQ(Read("pipe").Why, "it is no plain file");
    EXPECT_EQ(Read("none").Why, "No such file or directory");
    EXPECT_EQ(Read("none").Error, ENOENT);
}

TEST_F(PlainFiles, AreFoundThroughALinkIfThatIsAllowed) {
    Folder.Put("file", "text");
    Folder.Link("file", "link");
    EXPECT_EQ(Read("link").Bytes, "text");
    EXPECT_EQ(Read("link", Links::Refuse).Why, "it is a link");
}

} // namespace
} // namespace backends
