// SPDX-License-Identifier: MIT
// The real window program on a separate X server, the actions of its user, and what the user sees.
#pragma once

#include <QImage>
#include <QRect>

#include <chrono>
#include <csignal>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace live {

/// Checks a condition every few milliseconds until it holds. Returns false if it does not hold after a minute, which is
/// far longer than any step takes, however busy the machine is.
bool Eventually(const std::function<bool()>& holds);
bool Eventually(const std::function<bool()>& holds, std::chrono::milliseconds patience);

/// Returns true if the effect of an action is visible. It is called repeatedly and must change nothing.
using Effect = std::function<bool()>;

/// Acts as a user does: performs the action, waits for the effect, and repeats the action if everything is at rest
/// without it. A busy program drops clicks, and a page that was just filled paints itself again a tenth of a second
/// later, which closes what was opened before. Returns false if there is no effect after a minute.
[[nodiscard]] bool ActUntil(const Effect& effect, const std::function<void()>& act,
                            const std::function<bool()>& isAtRest);

/// A folder that is removed at the end of the test.
class Folder {
public:
    Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder();
    std::string Path(const std::string& name = "") const { return name.empty() ? Place_ : Place_ + "/" + name; }
    /// Writes a file, and creates the folders above it.
    void Put(const std::string& name, const std::string& bytes) const;
    /// Returns the bytes of a file; empty if it does not exist.
    std::string Bytes(const std::string& name) const;

private:
    std::string Place_;
};

/// A child process. It is ended with this object, and with the test, however the test ends.
class Child {
public:
    struct Setting {
        std::map<std::string, std::string> Environment; ///< added to the test's own; an empty value removes a name
        std::function<void()> BeforeStart;              ///< called in the child
    };
    explicit Child(const std::vector<std::string>& words, const Setting& setting = {});
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child();

    int Id() const { return Process_; }
    void Signal(int number) const;
    bool HasEnded();
    /// Waits for the end. Returns the exit status; -1 if a signal ended the process, or it still runs after a minute.
    int ExitStatus();
    std::string Output() const { return Streams_.Bytes("output"); }
    std::string Errors() const { return Streams_.Bytes("errors"); }

    long MemoryKilobytes() const { return KilobytesOf("VmRSS:"); }
    /// Returns the memory that is mapped, used or not, which is what RLIMIT_AS limits.
    long AddressKilobytes() const { return KilobytesOf("VmSize:"); }
    /// Returns the processor time that it has used, in seconds.
    double ProcessorSeconds() const;
    /// Returns how often its threads have gone to sleep, each of which follows being woken.
    long Sleeps() const;

private:
    long KilobytesOf(const std::string& entry) const;

    Folder Streams_;
    int Process_ = -1;
    std::optional<int> Status_;
};

/// An X server with a window manager, a mouse and a keyboard. Every click, key or typed text names its effect and is
/// repeated until the effect is visible (ActUntil). There is no other way to act.
class Desktop {
public:
    enum class Hand { Sure, Misses }; ///< Misses: the first try of each action has no effect

    explicit Desktop(Hand hand = Hand::Sure);

    const std::string& Display() const { return Name_; }
    /// Returns what is on the screen.
    QImage Picture() const;
    /// Clicks, and moves the pointer aside afterwards. `place` is called before each click.
    [[nodiscard]] bool Click(const std::function<QPoint()>& place, const Effect& effect);
    [[nodiscard]] bool Press(const std::string& key, const Effect& effect);
    /// Types into an empty field, letter by letter. The effect of each is that the text reaches further to the right.
    [[nodiscard]] bool Type(const std::string& letters, const std::function<QRect()>& field);
    /// Performs several actions that have an effect together. Each of them also has its own.
    [[nodiscard]] bool Do(const std::function<void()>& acts, const Effect& effect);
    void PutPointerAside() { Tell({"mousemove", "1010", "760"}); }
    /// From now on the desktop is at rest only if this process is too. The process that was watched before must have
    /// ended.
    void Watch(int process) { Program_ = process; }
    bool IsAtRest() const;
    /// Ends the server at once, as in a crash.
    void Vanish() { Server_->Signal(SIGKILL); }

    /// Returns the visible windows, the first to appear first. Menus and boxes are separate windows.
    std::vector<std::string> Windows() const;
    std::string ActiveWindow() const;
    /// Returns the effect that a part of the screen looks different from now.
    Effect Change(const QRect& part) const;

private:
    std::string Tell(const std::vector<std::string>& words) const;
    bool ActAtLast(const std::function<void()>& act, const Effect& effect);

    Hand Person_;
    Folder Frames_;
    std::string Name_;
    std::unique_ptr<Child> Server_;
    std::unique_ptr<Child> Manager_;
    int Program_ = 0;
};

/// Returns the box around all pixels of a colour, 0xRRGGBB; empty if there are none. `around`: how much each of its
/// three parts may differ, for shaded areas.
QRect BoxOf(const QImage& picture, QRgb colour, int around = 0);
/// Returns how many pixels of a box do not have its most frequent colour, which is a measure of the text in it.
int Ink(const QImage& picture, const QRect& box);
/// Returns how far to the right the text in a box reaches, without regard to its upper and lower edges.
int Reach(const QImage& picture, const QRect& box);

/// The window program in a desktop.
class RunningWindow {
public:
    /// Starts the program with its data and settings below `home`. With `desktop`, waits until the window has appeared.
    RunningWindow(Desktop* desktop, const Folder& home, const std::vector<std::string>& arguments = {},
                  Child::Setting setting = {});

    Child& Process() { return Program_; }
    /// Opens a menu, and chooses its entry by the letter that is underlined.
    void Choose(const std::string& menuKey, const std::string& letter, const Effect& effect);
    /// Runs the only item of a menu, which the key does.
    void Run(const std::string& menuKey, const Effect& effect);
    [[nodiscard]] bool MenuOpens(const std::string& menuKey);
    bool IsMenuOrBoxOpen() { return Screen_->Windows().size() > 1; }
    /// Returns true if a message box has the keyboard.
    bool IsAsking();
    /// Waits until IsAsking is true.
    bool Asks();
    /// Presses keys in the box until it is gone.
    void Answer(const std::string& keys);
    /// Waits until a part of the screen looks different from before.
    bool Changes(const QRect& part, const QImage& before);
    /// Waits until a colour is visible, and returns where.
    QRect Find(QRgb colour);

private:
    Desktop* Screen_;
    Child Program_;
    std::string Main_;
};

} // namespace live
