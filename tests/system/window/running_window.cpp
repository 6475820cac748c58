// SPDX-License-Identifier: MIT
#include "tests/system/window/running_window.h"

#include "tests/support/lines.h"
#include "tests/support/places.h"
#include "tests/support/processor_time.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace live {

namespace {

using support::Lines;

constexpr std::chrono::seconds Patience{60};
constexpr std::chrono::milliseconds Glance{20};

/// Returns true if no thread of a process runs or waits for a processor or a disk. True for a process that has ended.
bool Sleeps(int process) {
    std::error_code gone;
    for (const auto& thread : std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/task", gone)) {
        std::ifstream in(thread.path() / "stat");
        std::string text;
        std::getline(in, text);
        const std::size_t state = text.rfind(')') + 2; // the name before it may contain anything
        if (state < text.size() && (text[state] == 'R' || text[state] == 'D'))
            return false;
    }
    return true;
}

/// A four-byte number of an X window dump, highest byte first.
quint32 Number(const std::string& bytes, int index) {
    quint32 number = 0;
    for (std::size_t i = 0; i < 4; ++i)
        number = number << 8 | static_cast<unsigned char>(bytes[static_cast<std::size_t>(index) * 4 + i]);
    return number;
}

} // namespace

bool Eventually(const std::function<bool()>& holds) {
    return Eventually(holds, Patience);
}

bool Eventually(const std::function<bool()>& holds, std::chrono::milliseconds patience) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!holds()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(Glance);
    }
    return true;
}

bool ActUntil(const Effect& effect, const std::function<void()>& act, const std::function<bool()>& isAtRest) {
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::milliseconds Lasting{200}; // longer than a fill needs to paint itself again
    constexpr std::chrono::milliseconds Restful{600}; // at rest for so long, nothing more will happen
    constexpr std::chrono::seconds Restless{10};      // a program that is flooded with input never rests
    const auto end = Clock::now() + Patience;
    while (Clock::now() < end) {
        act();
        const auto acted = Clock::now();
        auto busy = acted;
        while (Clock::now() - busy < Restful && Clock::now() - acted < Restless) {
            if (effect()) {
                std::this_thread::sleep_for(Lasting);
                if (effect())
                    return true;
            }
            if (!isAtRest())
                busy = Clock::now();
            std::this_thread::sleep_for(Glance);
        }
    }
    return effect();
}

Folder::Folder() {
    std::string path = (support::PlaceInMemory() / "quorin-window-XXXXXX").string();
    Place_ = ::mkdtemp(path.data()) == nullptr ? std::string() : path;
}

Folder::~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(Place_, ignored);
}

void Folder::Put(const std::string& name, const std::string& bytes) const {
    std::filesystem::create_directories(std::filesystem::path(Path(name)).parent_path());
    std::ofstream(Path(name), std::ios::binary) << bytes;
}

std::string Folder::Bytes(const std::string& name) const {
    std::ifstream in(Path(name), std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

// --- a child ---------------------------------------------------------------------------------------------------------

Child::Child(const std::vector<std::string>& words, const Setting& setting) {
    std::vector<char*> pointers;
    for (const std::string& word : words)
        pointers.push_back(const_cast<char*>(word.c_str()));
    pointers.push_back(nullptr);
    const std::string output = Streams_.Path("output");
    const std::string errors = Streams_.Path("errors");
    const int owner = ::getpid();
    Process_ = ::fork();
    if (Process_ != 0)
        return;
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != owner)
        ::_exit(127);
    ::dup2(::open("/dev/null", O_RDONLY), STDIN_FILENO);
    ::dup2(::open(output.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600), STDOUT_FILENO);
    ::dup2(::open(errors.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600), STDERR_FILENO);
    for (const auto& [name, value] : setting.Environment)
        value.empty() ? ::unsetenv(name.c_str()) : ::setenv(name.c_str(), value.c_str(), 1);
    if (setting.BeforeStart)
        setting.BeforeStart();
    ::execvp(pointers[0], pointers.data());
    ::_exit(127);
}

Child::~Child() {
    if (Process_ > 0 && !HasEnded()) {
        ::kill(Process_, SIGKILL);
        ::waitpid(Process_, nullptr, 0);
    }
}

void Child::Signal(int number) const {
    if (Process_ > 0 && !Status_)
        ::kill(Process_, number);
}

bool Child::HasEnded() {
    int ended = 0;
    if (!Status_ && ::waitpid(Process_, &ended, WNOHANG) == Process_)
        Status_ = WIFEXITED(ended) ? WEXITSTATUS(ended) : -1;
    return Status_.has_value();
}

int Child::ExitStatus() {
    return Eventually([this] { return HasEnded(); }) ? *Status_ : -1;
}

long Child::KilobytesOf(const std::string& entry) const {
    std::ifstream in("/proc/" + std::to_string(Process_) + "/status");
    for (std::string line; std::getline(in, line);)
        if (line.rfind(entry, 0) == 0)
            return std::stol(line.substr(entry.size()));
    return 0;
}

double Child::ProcessorSeconds() const {
    return support::ProcessorSeconds(Process_);
}

long Child::Sleeps() const {
    long sleeps = 0;
    for (const auto& thread : std::filesystem::directory_iterator("/proc/" + std::to_string(Process_) + "/task")) {
        std::ifstream in(thread.path() / "status");
        const std::string entry = "voluntary_ctxt_switches:";
        for (std::string line; std::getline(in, line);)
            if (line.rfind(entry, 0) == 0)
                sleeps += std::stol(line.substr(entry.size()));
    }
    return sleeps;
}

// --- the desktop -----------------------------------------------------------------------------------------------------

Desktop::Desktop(Hand hand) : Person_(hand) {
    // The server writes the number of its display as soon as it accepts clients, and keeps its screen in a file. "-r":
    // it repeats no key that is down, because on a busy machine the release of a typed key may be late.
    Server_ = std::make_unique<Child>(std::vector<std::string>{"Xvfb", "-displayfd", "1", "-screen", "0", "1024x768x24",
                                                               "-fbdir", Frames_.Path(), "-nolisten", "tcp", "-noreset",
                                                               "-r"});
    Eventually([this] { return Server_->HasEnded() || Server_->Output().find('\n') != std::string::npos; });
    Name_ = ":" + Server_->Output().substr(0, Server_->Output().find('\n'));
    Child::Setting setting;
    setting.Environment = {{"DISPLAY", Name_}};
    Manager_ = std::make_unique<Child>(std::vector<std::string>{"openbox"}, setting);
    EXPECT_TRUE(Eventually([this] { return Tell({"get_desktop"}) == "0\n"; })) << "no window manager";
}

std::string Desktop::Tell(const std::vector<std::string>& words) const {
    std::vector<std::string> all = {"xdotool"};
    all.insert(all.end(), words.begin(), words.end());
    Child::Setting setting;
    setting.Environment = {{"DISPLAY", Name_}};
    Child tool(all, setting);
    return tool.ExitStatus() == 0 ? tool.Output() : std::string();
}

QImage Desktop::Picture() const {
    const std::string dump = Frames_.Bytes("Xvfb_screen0");
    constexpr std::size_t HeaderSize = 100;
    if (dump.size() < HeaderSize)
        return {};
    const quint32 width = Number(dump, 4);
    const quint32 height = Number(dump, 5);
    const quint32 bytesPerLine = Number(dump, 12);
    const std::size_t pixels = Number(dump, 0) + std::size_t{12} * Number(dump, 19);
    if (dump.size() < pixels + std::size_t{bytesPerLine} * height)
        return {};
    return QImage(reinterpret_cast<const uchar*>(dump.data()) + pixels, static_cast<int>(width),
                  static_cast<int>(height), static_cast<int>(bytesPerLine), QImage::Format_RGB32)
        .copy();
}

bool Desktop::IsAtRest() const {
    return Sleeps(Server_->Id()) && Sleeps(Manager_->Id()) && (Program_ == 0 || Sleeps(Program_));
}

bool Desktop::ActAtLast(const std::function<void()>& act, const Effect& effect) {
    bool misses = Person_ == Hand::Misses;
    return ActUntil(
        effect,
        [&] {
            if (!misses)
                act();
            misses = false;
        },
        [this] { return IsAtRest(); });
}

bool Desktop::Click(const std::function<QPoint()>& place, const Effect& effect) {
    return ActAtLast(
        [&] {
            const QPoint there = place();
            Tell({"mousemove", std::to_string(there.x()), std::to_string(there.y())});
            Tell({"click", "1"});
            PutPointerAside(); // the pointer is part of the picture
        },
        effect);
}

bool Desktop::Press(const std::string& key, const Effect& effect) {
    return ActAtLast([&] { Tell({"key", key}); }, effect);
}

bool Desktop::Type(const std::string& letters, const std::function<QRect()>& field) {
    constexpr int Cursor = 2; // pixels; the cursor blinks
    return std::all_of(letters.begin(), letters.end(), [&](char letter) {
        const int before = Reach(Picture(), field());
        return ActAtLast(
            [&] {
                Tell({"type", std::string(1, letter)});
            },
            [&] { return Reach(Picture(), field()) > before + Cursor; });
    });
}

bool Desktop::Do(const std::function<void()>& acts, const Effect& effect) {
    return ActUntil(effect, acts, [this] { return IsAtRest(); });
}

Effect Desktop::Change(const QRect& part) const {
    return [this, part, before = Picture().copy(part)] { return Picture().copy(part) != before; };
}

std::vector<std::string> Desktop::Windows() const {
    return Lines(Tell({"search", "--onlyvisible", "--class", "quorin"}));
}

std::string Desktop::ActiveWindow() const {
    const auto lines = Lines(Tell({"getactivewindow"}));
    return lines.empty() ? std::string() : lines.front();
}

// --- what is seen ----------------------------------------------------------------------------------------------------

QRect BoxOf(const QImage& picture, QRgb colour, int around) {
    const auto fits = [&](QRgb seen) {
        return std::abs(qRed(seen) - qRed(colour)) <= around && std::abs(qGreen(seen) - qGreen(colour)) <= around &&
               std::abs(qBlue(seen) - qBlue(colour)) <= around;
    };
    QRect box;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (fits(picture.pixel(x, y)))
                box |= QRect(x, y, 1, 1);
    return box;
}

int Ink(const QImage& picture, const QRect& box) {
    std::map<QRgb, int> counts;
    int most = 0;
    const QRect part = box.intersected(picture.rect());
    for (int y = part.top(); y <= part.bottom(); ++y)
        for (int x = part.left(); x <= part.right(); ++x)
            most = std::max(most, ++counts[picture.pixel(x, y)]);
    return part.width() * part.height() - most;
}

int Reach(const QImage& picture, const QRect& box) {
    constexpr int Edge = 4; // pixels; a field's frame
    const QImage text = picture.copy(box.adjusted(0, Edge, 0, -Edge));
    const QRgb paper = text.pixel(text.width() - 1, text.height() / 2);
    int reach = 0;
    for (int y = 0; y < text.height(); ++y)
        for (int x = reach; x < text.width(); ++x)
            if (text.pixel(x, y) != paper)
                reach = x;
    return reach;
}

// --- the window ------------------------------------------------------------------------------------------------------

namespace {

std::vector<std::string> Words(const std::vector<std::string>& arguments) {
    std::vector<std::string> words = {QUORIN_WINDOW};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return words;
}

/// Sets a separate home folder, no sound, and nothing from the desktop on which the test runs.
Child::Setting AtHome(Child::Setting setting, const Folder& home, const Desktop* desktop) {
    home.Put("silence", "pcm.!default { type null }\n");
    const std::map<std::string, std::string> own = {
        {"HOME", home.Path()},
        {"XDG_DATA_HOME", home.Path("data")},
        {"XDG_CONFIG_HOME", home.Path("config")},
        {"XDG_STATE_HOME", home.Path("state")},
        {"XDG_RUNTIME_DIR", home.Path()},
        {"DISPLAY", desktop != nullptr ? desktop->Display() : std::string()},
        {"WAYLAND_DISPLAY", ""},
        {"QT_QPA_PLATFORM", ""},
        {"QT_SCALE_FACTOR", ""},
        {"DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere"},
        {"ALSA_CONFIG_PATH", home.Path("silence")},
    };
    setting.Environment.insert(own.begin(), own.end());
    return setting;
}

} // namespace

RunningWindow::RunningWindow(Desktop* desktop, const Folder& home, const std::vector<std::string>& arguments,
                             Child::Setting setting)
    : Screen_(desktop), Program_(Words(arguments), AtHome(std::move(setting), home, desktop)) {
    if (Screen_ == nullptr)
        return;
    Screen_->Watch(Program_.Id());
    Eventually([this] { return Program_.HasEnded() || !Screen_->Windows().empty(); });
    const auto windows = Screen_->Windows();
    if (windows.empty())
        return;
    Main_ = windows.front();
    Screen_->PutPointerAside();
    EXPECT_TRUE(Eventually([this] { return Screen_->ActiveWindow() == Main_; }));
    EXPECT_TRUE(Eventually([this] { return BoxOf(Screen_->Picture(), 0xFFFFFF).height() > 300; }))
        << "nothing is painted";
}

bool RunningWindow::MenuOpens(const std::string& menuKey) {
    return Screen_->Press(menuKey, [this] { return IsMenuOrBoxOpen(); });
}

void RunningWindow::Choose(const std::string& menuKey, const std::string& letter, const Effect& effect) {
    const auto isTaken = [this] { return !IsMenuOrBoxOpen() || IsAsking() || Program_.HasEnded(); };
    const bool isDone = Screen_->Do(
        [&] {
            EXPECT_TRUE(MenuOpens(menuKey)) << menuKey;
            EXPECT_TRUE(Screen_->Press(letter, isTaken)) << letter;
        },
        [&] { return isTaken() && effect(); }); // an open menu covers a part of the screen that `effect` looks at
    EXPECT_TRUE(isDone) << menuKey << ' ' << letter;
}

void RunningWindow::Run(const std::string& menuKey, const Effect& effect) {
    EXPECT_TRUE(Screen_->Press(menuKey, effect)) << menuKey;
}

bool RunningWindow::IsAsking() {
    const std::string active = Screen_->ActiveWindow();
    return IsMenuOrBoxOpen() && !active.empty() && active != Main_;
}

bool RunningWindow::Asks() {
    return Eventually([this] { return IsAsking(); });
}

void RunningWindow::Answer(const std::string& keys) {
    EXPECT_TRUE(Screen_->Press(keys, [this] { return !IsMenuOrBoxOpen() && Screen_->ActiveWindow() == Main_; }))
        << keys;
}

bool RunningWindow::Changes(const QRect& part, const QImage& before) {
    return Eventually([&] { return Screen_->Picture().copy(part) != before.copy(part); });
}

QRect RunningWindow::Find(QRgb colour) {
    QRect box;
    EXPECT_TRUE(Eventually([&] { return !(box = BoxOf(Screen_->Picture(), colour)).isEmpty(); })) << std::hex << colour;
    return box;
}

} // namespace live
