// SPDX-License-Identifier: MIT
// The owner and the rights of a file after it was rewritten. Only root can change owners, so these tests run only as
// root.
#include "backends/files/host_files.h"

#include "tests/support/printed_rows.h"
#include "tests/support/temporary_root.h"

#include <fcntl.h>
#include <functional>
#include <gmock/gmock.h>
#include <grp.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

using namespace platform;
using namespace backends;

namespace {

using support::PrintTo;

constexpr const char* AccessList = "system.posix_acl_access";
constexpr const char* FoldersList = "system.posix_acl_default";
constexpr uid_t Somebody = 4711;
constexpr gid_t Group = 4712;
constexpr gid_t OtherGroup = 4713;

struct ListEntry {
    unsigned Tag;
    unsigned Rights;
    unsigned Id = 0xFFFFFFFF;
};

void AppendNumber(std::string& bytes, unsigned number, int size) {
    for (int i = 0; i < size; ++i)
        bytes += static_cast<char>(number >> 8 * i & 0xFF);
}

std::string ListOf(const std::vector<ListEntry>& entries) {
    std::string bytes;
    AppendNumber(bytes, 2, 4);
    for (const ListEntry& entry : entries) {
        AppendNumber(bytes, entry.Tag, 2);
        AppendNumber(bytes, entry.Rights, 2);
        AppendNumber(bytes, entry.Id, 4);
    }
    return bytes;
}

/// The owner and one other user may write, the group may read.
const std::string OneMoreWriter = ListOf({{0x01, 6}, {0x02, 6, Somebody}, {0x04, 4}, {0x10, 6}, {0x20, 0}});

std::string ListAt(const std::string& path) {
    std::string list(1024, '\0');
    const ssize_t size = getxattr(path.c_str(), AccessList, list.data(), list.size());
    list.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return list;
}

bool SetList(const std::string& path, const char* name, const std::string& list) {
    return setxattr(path.c_str(), name, list.data(), list.size(), 0) == 0;
}

struct stat At(const std::string& path) {
    struct stat found {};
    EXPECT_EQ(stat(path.c_str(), &found), 0);
    return found;
}

class RightsOfARewrittenFile : public testing::Test {
protected:
    void SetUp() override {
        if (getuid() != 0)
            GTEST_SKIP() << "takes several users, and so root";
        Root.Put("table.txt", "old");
        ASSERT_EQ(chmod(Root.Path().c_str(), 0777), 0);
        Watch();
    }
    void TearDown() override { Rights = {}; }

    /// Records the reports of lost rights, as a program does from its start.
    void Watch() {
        Rights = {.Lost = [this](const std::string& name) { Told.push_back(name); }, .Told = {}};
    }

    const std::string Table() const { return Root.Path("table.txt"); }

    ErrorNumber Rewrite() {
        FileEntry entry;
        EXPECT_EQ(EntryAt(Table(), entry), NoError);
        Replacement next(std::move(entry));
        if (const ErrorNumber error = next.Begin(); error != NoError)
            return error;
        EXPECT_EQ(WriteAll(next.File(), "new", 0), NoError);
        return next.Commit();
    }

    ErrorNumber MoveOverIt() {
        FileEntry scratch;
        FileEntry entry;
        Root.Put("scratch.txt", "new");
        EXPECT_EQ(EntryAt(Root.Path("scratch.txt"), scratch), NoError);
        EXPECT_EQ(EntryAt(Table(), entry), NoError);
        return MoveOver(scratch, std::move(entry));
    }

    /// Performs the action as a user of these groups. Returns how many lost rights were reported; 98 if the action
    /// failed.
    int As(uid_t user, std::vector<gid_t> groups, const std::function<ErrorNumber()>& act) {
        const pid_t process = fork();
        if (process == 0) {
            if (setgroups(groups.size(), groups.data()) != 0 || setgid(groups.front()) != 0 || setuid(user) != 0)
                _exit(99);
            _exit(act() == NoError ? static_cast<int>(Told.size()) : 98);
        }
        int status = 0;
        waitpid(process, &status, 0);
        return WEXITSTATUS(status);
    }

    TemporaryRoot Root;
    std::vector<std::string> Told;
};

TEST_F(RightsOfARewrittenFile, HaveItsOwnerGroupAndModeButNoOtherUsersPower) {
    for (const bool moves : {false, true}) {
        ASSERT_EQ(chown(Table().c_str(), Somebody, Group), 0);
        ASSERT_EQ(chmod(Table().c_str(), 06755), 0);
        ASSERT_EQ(moves ? MoveOverIt() : Rewrite(), NoError);
        EXPECT_EQ(Root.Bytes("table.txt"), "new");
        EXPECT_EQ(At(Table()).st_uid, Somebody);
        EXPECT_EQ(At(Table()).st_gid, Group);
        EXPECT_EQ(At(Table()).st_mode & 07777, 0755U);
    }
    EXPECT_TRUE(Told.empty());
}

TEST_F(RightsOfARewrittenFile, HaveItsAccessList) {
    if (!SetList(Table(), AccessList, OneMoreWriter))
        GTEST_SKIP() << "no access lists on this file system";
    ASSERT_EQ(Rewrite(), NoError);
    EXPECT_EQ(ListAt(Table()), OneMoreWriter);
    ASSERT_EQ(MoveOverIt(), NoError);
    EXPECT_EQ(ListAt(Table()), OneMoreWriter);
    EXPECT_TRUE(Told.empty());
}

/// A folder may add to each new file an access list that the old file did not have.
TEST_F(RightsOfARewrittenFile, HaveNothingOfTheFoldersList) {
    ASSERT_EQ(chmod(Table().c_str(), 0660), 0);
    if (!SetList(Root.Path(), FoldersList, OneMoreWriter))
        GTEST_SKIP() << "no access lists on this file system";
    ASSERT_EQ(Rewrite(), NoError);
    EXPECT_EQ(ListAt(Table()), "");
    EXPECT_EQ(At(Table()).st_mode & 07777, 0660U);
}

TEST_F(RightsOfARewrittenFile, HaveItsGroupAndModeWhereTheOwnerCanNotBeKept) {
    ASSERT_EQ(chown(Table().c_str(), 0, Group), 0);
    ASSERT_EQ(chmod(Table().c_str(), 0664), 0);
    EXPECT_EQ(As(Somebody, {OtherGroup, Group}, [this] { return Rewrite(); }), 0) << "nothing is told";
    EXPECT_EQ(At(Table()).st_uid, Somebody);
    EXPECT_EQ(At(Table()).st_gid, Group);
    EXPECT_EQ(At(Table()).st_mode & 07777, 0664U);
}

struct LostGroup {
    mode_t Mode;
    mode_t Left;
};

class RightsWithoutTheGroup : public RightsOfARewrittenFile, public testing::WithParamInterface<LostGroup> {};

TEST_P(RightsWithoutTheGroup, GiveNobodyMoreThanBeforeAndItIsToldOnce) {
    ASSERT_EQ(chown(Table().c_str(), Somebody, Group), 0);
    ASSERT_EQ(chmod(Table().c_str(), GetParam().Mode), 0);
    EXPECT_EQ(As(Somebody, {OtherGroup}, [this] { return Rewrite() == NoError ? Rewrite() : DeviceFailed; }), 1);
    EXPECT_EQ(At(Table()).st_gid, OtherGroup);
    EXPECT_EQ(At(Table()).st_mode & 07777, GetParam().Left);
}

INSTANTIATE_TEST_SUITE_P(Modes, RightsWithoutTheGroup,
                         testing::Values(LostGroup{0660, 0600}, LostGroup{0664, 0644}, LostGroup{0606, 0600},
                                         LostGroup{0646, 0644}, LostGroup{0666, 0666}));

TEST_F(RightsOfARewrittenFile, AreToldAgainByTheNextProgramOfTheProcess) {
    Root.Put("next.txt", "old");
    for (const std::string& file : {Table(), Root.Path("next.txt")}) {
        ASSERT_EQ(chown(file.c_str(), Somebody, Group), 0);
        ASSERT_EQ(chmod(file.c_str(), 0660), 0);
    }
    const auto inTwoPrograms = [this] {
        const ErrorNumber first = Rewrite();
        Watch();
        if (std::rename(Root.Path("next.txt").c_str(), Table().c_str()) != 0)
            return DeviceFailed;
        return first == NoError ? Rewrite() : first;
    };
    EXPECT_EQ(As(Somebody, {OtherGroup}, inTwoPrograms), 2);
}

TEST_F(RightsOfARewrittenFile, AreEverybodysAloneWhereTheListGoesWithTheGroup) {
    ASSERT_EQ(chown(Table().c_str(), Somebody, Group), 0);
    if (!SetList(Table(), AccessList,
                 ListOf({{0x01, 6}, {0x02, 4, 99}, {0x04, 6}, {0x08, 5, 98}, {0x10, 7}, {0x20, 6}})))
        GTEST_SKIP() << "no access lists on this file system";
    EXPECT_EQ(As(Somebody, {OtherGroup}, [this] { return MoveOverIt(); }), 1);
    EXPECT_EQ(ListAt(Table()), "");
    EXPECT_EQ(At(Table()).st_mode & 07777, 0644U);
}

} // namespace
