// SPDX-License-Identifier: MIT
// The samples that reach an audio device, which is a file here.
#include "tests/support/temporary_root.h"
#include "tests/unit/backends/sound/crossings.h"

#include <array>
#include <chrono>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// A machine whose audio devices are those of this configuration.
class Audio : public testing::Test {
protected:
    Audio() {
        mkfifo(Folder.Path("stuck").c_str(), 0600);
        Folder.Put("alsa.conf", "pcm.nothing { type null }\n" + FileDevice("default", "heard") +
                                    FileDevice("other", "other") + FileDevice("stuck", "stuck"));
    }

    /// Returns the exit status of a program that plays; -1 if it had to be killed after `patience` seconds.
    int Play(const std::vector<std::string>& words, int patience = 60) {
        const pid_t process = fork();
        if (process == 0)
            Become(words);
        for (int round = 0; round < patience * 100; ++round) {
            int status = 0;
            if (waitpid(process, &status, WNOHANG) == process)
                return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
            usleep(10000);
        }
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
        return -1;
    }
    std::vector<std::int16_t> Samples(const std::string& name) {
        const std::string bytes = Folder.Bytes(name);
        std::vector<std::int16_t> samples(bytes.size() / 2);
        std::memcpy(samples.data(), bytes.data(), samples.size() * 2);
        return samples;
    }
    std::string Said() { return Folder.Bytes("output") + Folder.Bytes("errors"); }

    TemporaryRoot Folder;

private:
    /// Returns the configuration of a device. Each opening writes another file: heard, heard.0001 and so on.
    std::string FileDevice(const std::string& device, const std::string& file) {
        const bool numbered = device != "stuck";
        return "pcm." + device + " {\n type file\n slave.pcm nothing\n format raw\n file \"" + Folder.Path(file) +
               "\"\n truncate " + (numbered ? "false" : "true") + "\n}\n";
    }
    [[noreturn]] void Become(const std::vector<std::string>& words) {
        dup2(open(Folder.Path("output").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDOUT_FILENO);
        dup2(open(Folder.Path("errors").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDERR_FILENO);
        setenv("ALSA_CONFIG_PATH", Folder.Path("alsa.conf").c_str(), 1);
        std::vector<char*> arguments = {const_cast<char*>(QUORIN_TONE_PROGRAM)};
        for (const std::string& word : words)
            arguments.push_back(const_cast<char*>(word.c_str()));
        arguments.push_back(nullptr);
        execv(QUORIN_TONE_PROGRAM, arguments.data());
        _exit(127);
    }
};

TEST_F(Audio, GetsTheToneOfATakenResultToTheSample) {
    ASSERT_EQ(Play({"wait", "default", "1046", "250"}), 0);
    EXPECT_EQ(Samples("heard").size(), 11025U);
    EXPECT_NEAR(MeasuredHertz(Samples("heard")), 1046, 10.46);
}

TEST_F(Audio, GetsTheToneOfARefusedResultToTheSample) {
    ASSERT_EQ(Play({"wait", "default", "369", "300"}), 0);
    EXPECT_EQ(Samples("heard").size(), 13230U);
    EXPECT_NEAR(MeasuredHertz(Samples("heard")), 369, 3.69);
}

TEST_F(Audio, GetsTwoTonesInTheirOrder) {
    ASSERT_EQ(Play({"wait", "default", "1046", "250", "369", "300"}), 0);
    EXPECT_EQ(Samples("heard").size(), 11025U);
    EXPECT_NEAR(MeasuredHertz(Samples("heard")), 1046, 10.46);
    EXPECT_EQ(Samples("heard.0001").size(), 13230U);
    EXPECT_NEAR(MeasuredHertz(Samples("heard.0001")), 369, 3.69);
}

TEST_F(Audio, IsTheDeviceThatWasNamed) {
    ASSERT_EQ(Play({"wait", "other", "1046", "250"}), 0);
    EXPECT_EQ(Samples("other").size(), 11025U);
    EXPECT_FALSE(Folder.Has("heard"));
}

TEST_F(Audio, ThatIsNotThereIsNoErrorAndNoMessage) {
    EXPECT_EQ(Play({"wait", "missing", "1046", "250", "369", "300"}), 0);
    EXPECT_EQ(Said(), "ordered\n");
}

TEST_F(Audio, WithoutAnyConfigurationIsNoErrorAndNoMessage) {
    Folder.Put("alsa.conf", "");
    EXPECT_EQ(Play({"wait", "default", "1046", "250"}), 0);
    EXPECT_EQ(Said(), "ordered\n");
}

TEST_F(Audio, ThatDoesNotOpenKeepsNoProgramFromEnding) {
    EXPECT_EQ(Play({"leave", "stuck", "1046", "250", "369", "300"}, 20), 0); // no program reads the pipe
    EXPECT_EQ(Said(), "ordered\n");
}

TEST_F(Audio, ThatNeverComesBackKeepsNoProgramFromEnding) {
    EXPECT_EQ(Play({"hang", "default", "1046", "250", "369", "300"}, 20), 0);
    EXPECT_EQ(Said(), "ordered\n");
}

} // namespace
