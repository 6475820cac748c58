// SPDX-License-Identifier: MIT
// The suites of src/view/platform/storage.h and of the settings, for any implementation of them.
//
// A store joins by one file that derives from StorageUnderTest and instantiates the suites, as host_storage.cpp does.
// Its factory gives a new, empty store for each test. What a store does not have is a suite that its file leaves out,
// with the reason. A suite that no file of a program instantiates fails the program.
#pragma once

#include "src/view/platform/device.h"
#include "src/view/platform/storage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace conformance {

using namespace platform;

inline constexpr std::int32_t TextType = 0x54455854;
inline constexpr std::int32_t OtherType = 0x64617461;
inline constexpr std::int32_t Creator = 0x5156524E;
inline const Text Definition = u"LineNumber long, LineData String";

/// A store, and its files as another program sees and changes them. Names are those of the device: `.\x.txt` is in the
/// root folder, `Card:\x.txt` on a volume.
class StorageUnderTest {
public:
    virtual ~StorageUnderTest() = default;

    virtual FileSystem& Files() = 0;
    virtual RecordDatabase& Databases() = 0;
    virtual Settings& SettingsStore() = 0;

    /// Writes a file, with the folders above it and its volume. A file that exists stays the same one.
    virtual void Put(const Text& fullName, const std::string& bytes) = 0;
    virtual std::string Bytes(const Text& fullName) = 0; ///< "no such file" if there is none
    virtual void Remove(const Text& fullName) = 0;
    virtual bool Has(const Text& fullName) = 0;
    /// Makes a folder or a volume.
    virtual void MakeFolder(const Text& path) = 0;
    virtual bool HasFolder(const Text& path) = 0;
    virtual std::size_t Entries(const Text& path) = 0; ///< number of files and folders in a folder, hidden ones too
};

struct StorageFactory {
    const char* Name;
    std::unique_ptr<StorageUnderTest> (*Make)();
};

inline void PrintTo(const StorageFactory& factory, std::ostream* out) {
    *out << factory.Name;
}

class StorageSuite : public testing::TestWithParam<StorageFactory> {
protected:
    FileSystem& Files() { return Store->Files(); }
    RecordDatabase& Databases() { return Store->Databases(); }

    std::unique_ptr<TextStream> Open(const Text& fullName, StreamMode mode = StreamMode::Existing) {
        std::unique_ptr<TextStream> stream;
        EXPECT_EQ(Files().OpenStream(fullName, mode, stream), NoError);
        return stream;
    }

    ErrorNumber ErrorOfOpening(const Text& name, StreamMode mode = StreamMode::Existing) {
        std::unique_ptr<TextStream> stream;
        const ErrorNumber error = Files().OpenStream(name, mode, stream);
        EXPECT_EQ(stream == nullptr, error != NoError);
        return error;
    }

    ErrorNumber ErrorOfOpeningFolder(const Text& path, bool create) {
        std::unique_ptr<Folder> folder;
        const ErrorNumber error = Files().OpenFolder(path, create, folder);
        EXPECT_EQ(folder == nullptr, error != NoError);
        return error;
    }

    std::vector<Text> AllLines(const Text& fullName) {
        std::vector<Text> lines;
        const auto stream = Open(fullName);
        for (Text line; stream && stream->ReadLine(line) == NoError;)
            lines.push_back(line);
        return lines;
    }

    void WriteAll(const Text& fullName, const std::vector<Text>& lines) {
        const auto stream = Open(fullName, StreamMode::Create);
        AppendAndClose(*stream, lines);
    }

    static void AppendAndClose(TextStream& stream, const std::vector<Text>& lines) {
        ASSERT_EQ(stream.Seek(0, Origin::End), NoError);
        for (const Text& line : lines)
            EXPECT_EQ(stream.WriteLine(line), NoError);
        EXPECT_EQ(stream.Close(), NoError);
    }

    /// Returns the number of lines skipped, without a failure.
    static std::int64_t Skipped(TextStream& stream, std::int64_t most) {
        std::int64_t passed = -1;
        EXPECT_EQ(stream.SkipLines(most, passed), NoError);
        return passed;
    }

    /// Returns the names of the databases in the order of the walk.
    std::vector<Text> Names(std::int32_t type, std::int32_t creator) {
        std::vector<Text> names;
        for (Text name = Databases().FirstDatabase(type, creator); !name.empty(); name = Databases().NextDatabase())
            names.push_back(name);
        return names;
    }

    std::unique_ptr<StorageUnderTest> Store = GetParam().Make();
};

/// What is missing, also in a store that can't store anything.
class EmptyStorageSuite : public StorageSuite {};
/// Folders, files and their lines.
class FilesSuite : public StorageSuite {};
/// What a stream finds when another program changes its file.
class OtherProgramsSuite : public StorageSuite {};
/// What a stream finds when another program removes or replaces its file.
class ReplacedFilesSuite : public StorageSuite {};

class DatabaseSuite : public StorageSuite {
protected:
    DatabaseId Made(const Text& name, const std::vector<Text>& lines = {}) {
        const DatabaseId id = Databases().Create(name, TextType, Creator).Id;
        EXPECT_NE(id, 0);
        EXPECT_EQ(Databases().DeclareTable(id, u"TEXT", Definition), NoError);
        for (const Text& line : lines)
            Append(id, line);
        return id;
    }

    void Append(DatabaseId id, const Text& line) {
        ASSERT_EQ(Databases().AddRecord(id), NoError);
        ASSERT_EQ(Databases().WriteRecord(id, {Databases().RecordCount(id) + 1, line}), NoError);
        ASSERT_EQ(Databases().Commit(id), NoError);
    }

    Text CurrentLine(DatabaseId id) {
        LineRecord record;
        return Databases().ReadRecord(id, record) ? record.LineData : Text(u"no record");
    }

    std::vector<Text> Lines(DatabaseId id) {
        std::vector<Text> lines;
        for (std::int32_t line = 1; line <= Databases().RecordCount(id); ++line) {
            EXPECT_EQ(Databases().FindRecord(id, line), NoError) << "line " << line;
            EXPECT_EQ(Databases().Position(id), line - 1);
            lines.push_back(CurrentLine(id));
        }
        return lines;
    }
};

class SettingsSuite : public StorageSuite {
protected:
    Text Get(const Text& key, const Text& byDefault = u"default") {
        return Store->SettingsStore().Get(u"Quorin", u"Settings", key, byDefault);
    }
    ErrorNumber Save(const Text& key, const Text& value) {
        return Store->SettingsStore().Save(u"Quorin", u"Settings", key, value);
    }
};

/// Runs all suites of a store.
#define QUORIN_RUN_STORAGE_SUITES(Name, factory)                                                                       \
    QUORIN_RUN_STORAGE_SUITES_OF_ONE_PROGRAM(Name, factory);                                                           \
    INSTANTIATE_TEST_SUITE_P(Name, ReplacedFilesSuite, testing::Values(factory))

/// Runs them on a store whose files no other program removes or replaces.
#define QUORIN_RUN_STORAGE_SUITES_OF_ONE_PROGRAM(Name, factory)                                                        \
    INSTANTIATE_TEST_SUITE_P(Name, EmptyStorageSuite, testing::Values(factory));                                       \
    INSTANTIATE_TEST_SUITE_P(Name, FilesSuite, testing::Values(factory));                                              \
    INSTANTIATE_TEST_SUITE_P(Name, OtherProgramsSuite, testing::Values(factory));                                      \
    INSTANTIATE_TEST_SUITE_P(Name, DatabaseSuite, testing::Values(factory));                                           \
    INSTANTIATE_TEST_SUITE_P(Name, SettingsSuite, testing::Values(factory))

} // namespace conformance
