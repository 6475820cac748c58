// SPDX-License-Identifier: MIT
// Every storage that a back-end may be given, under one roof: a suite that is written against the list of platform
// operations runs on each of them.
#pragma once

#include "backends/files/host_file_system.h"
#include "backends/files/line_database.h"
#include "backends/files/settings_file.h"
#include "backends/simulated/failing_storage.h"
#include "tests/support/temporary_root.h"
#include "tests/unit/backends/files/skipped_lines.h"

#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <vector>

enum class Storage { Plain, BehindAFaultSwitchThatIsOff };

inline void PrintTo(Storage storage, std::ostream* out) {
    *out << (storage == Storage::Plain ? "plain" : "behind a fault switch");
}

class StorageSuite : public testing::TestWithParam<Storage> {
protected:
    platform::FileSystem& Files() { return Plain() ? static_cast<platform::FileSystem&>(PlainFiles_) : GuardedFiles_; }
    platform::RecordDatabase& Databases() {
        return Plain() ? static_cast<platform::RecordDatabase&>(PlainDatabases_) : GuardedDatabases_;
    }
    platform::Settings& Settings() {
        return Plain() ? static_cast<platform::Settings&>(PlainSettings_) : GuardedSettings_;
    }

    std::unique_ptr<platform::TextStream> Open(const Text& fullName, platform::StreamMode mode) {
        std::unique_ptr<platform::TextStream> stream;
        EXPECT_EQ(Files().OpenStream(fullName, mode, stream), platform::NoError);
        return stream;
    }

    std::vector<Text> AllLines(const Text& fullName) {
        std::vector<Text> lines;
        const auto stream = Open(fullName, platform::StreamMode::Existing);
        for (Text line; stream && stream->ReadLine(line) == platform::NoError;)
            lines.push_back(line);
        return lines;
    }

    void WriteAll(const Text& fullName, const std::vector<Text>& lines) {
        const auto stream = Open(fullName, platform::StreamMode::Create);
        for (const Text& line : lines)
            EXPECT_EQ(stream->WriteLine(line), platform::NoError);
        EXPECT_EQ(stream->Close(), platform::NoError);
    }

    TemporaryRoot Root;

private:
    bool Plain() const { return GetParam() == Storage::Plain; }

    backends::PathMap Paths_{Root.Path()};
    backends::DiskFaults Faults_;
    backends::HostFileSystem PlainFiles_{Paths_};
    backends::FailingFileSystem GuardedFiles_{PlainFiles_, Faults_};
    backends::LineDatabase PlainDatabases_{Paths_};
    backends::FailingDatabase GuardedDatabases_{PlainDatabases_, Faults_};
    backends::SettingsFile PlainSettings_{Root.Path("settings.ini")};
    backends::FailingSettings GuardedSettings_{PlainSettings_, Faults_};
};

inline const auto EveryStorage = testing::Values(Storage::Plain, Storage::BehindAFaultSwitchThatIsOff);
