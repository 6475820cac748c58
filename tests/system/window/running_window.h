// SPDX-License-Identifier: MIT
// The real window program on an X server of its own, the hand of the person at it, and what that person sees.
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

/// Looks every few milliseconds whether something holds; false when it still doesn't after a minute, which is far
/// beyond what any step takes, however busy the machine is.
bool Eventually(const std::function<bool()>& holds);
bool Eventually(const std::function<bool()>& holds, std::chrono::milliseconds patience);

/// What is to be seen of an act: it is asked again and again, and changes nothing by that.
using Effect = std::function<bool()>;

/// Acts as a person does: looks for the effect, and where everything has come to rest without it, acts once more. A
/// busy program drops what was clicked while it could not answer, and a page that was just filled paints itself again a
/// tenth of a second later, which closes what was opened under a quicker finger. False when there is no effect after a
/// minute.
[[nodiscard]] bool ActUntil(const Effect& effect, const std::function<void()>& act,
                            const std::function<bool()>& isAtRest);

/// A folder that is gone with the test.
class Folder {
public:
    Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder();
    std::string Path(const std::string& name = "") const { return name.empty() ? Place_ : Place_ + "/" + name; }
    /// Writes a file, with the folders above it.
    void Put(const std::string& name, const std::string& bytes) const;
    /// The bytes of a file; empty when it does not exist.
    std::string Bytes(const std::string& name) const;

private:
    std::string Place_;
};

/// A child process. It ends with this object, and with the test, however that ends.
class Child {
public:
    struct Setting {
        std::map<std::string, std::string> Environment; ///< over the test's own; an empty value takes the name away
        std::function<void()> BeforeStart;              ///< in the child
    };
    explicit Child(const std::vector<std::string>& words, const Setting& setting = {});
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child();

    int Id() const { return Process_; }
    void Signal(int number) const;
    bool HasEnded();
    /// Waits for the end; -1 when it was a signal's, or did not come.
    int ExitStatus();
    std::string Output() const { return Streams_.Bytes("output"); }
    std::string Errors() const { return Streams_.Bytes("errors"); }

    long MemoryKilobytes() const { return KilobytesOf("VmRSS:"); }
    /// What it has mapped, used or not: a limit goes by that.
    long AddressKilobytes() const { return KilobytesOf("VmSize:"); }
    /// The time that it has kept a processor busy, in seconds.
    double ProcessorSeconds() const;

private:
    long KilobytesOf(const std::string& entry) const;

    Folder Streams_;
    int Process_ = -1;
    std::optional<int> Status_;
};

/// An X server with a window manager, and a mouse and a keyboard at it. Whatever is clicked, pressed or typed names its
/// effect, and is done until that is there (ActUntil): there is no other way to act.
class Desktop {
public:
    enum class Hand { Sure, Misses }; ///< of one that misses, the first try of each act goes nowhere

    explicit Desktop(Hand hand = Hand::Sure);

    const std::string& Display() const { return Name_; }
    /// What is on the screen.
    QImage Picture() const;
    /// The pointer is out of the way afterwards. `place` is asked before each click.
    [[nodiscard]] bool Click(const std::function<QPoint()>& place, const Effect& effect);
    [[nodiscard]] bool Press(const std::string& key, const Effect& effect);
    /// Types into an empty field, letter by letter; each is there when the text reaches further to the right.
    [[nodiscard]] bool Type(const std::string& letters, const std::function<QRect()>& field);
    /// Several acts that have one effect together; each of them has one of its own, too.
    [[nodiscard]] bool Do(const std::function<void()>& acts, const Effect& effect);
    void PutPointerAside() { Tell({"mousemove", "1010", "760"}); }
    /// The desktop is at rest when this process is, too. The one that was watched before has ended.
    void Watch(int process) { Program_ = process; }
    bool IsAtRest() const;
    /// Is gone at once, as a server that has crashed.
    void Vanish() { Server_->Signal(SIGKILL); }

    /// The windows that can be seen, the first to come first. Menus and boxes are windows of their own.
    std::vector<std::string> Windows() const;
    std::string ActiveWindow() const;
    /// That a part of the screen looks otherwise than now.
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

/// Where a colour is to be seen, 0xRRGGBB; an empty box when it is not. `around`: each of its three parts may be off by
/// so much, as in a shaded face.
QRect BoxOf(const QImage& picture, QRgb colour, int around = 0);
/// How many pixels of a box have not its most frequent colour: text, more or less of it.
int Ink(const QImage& picture, const QRect& box);
/// How far to the right the ink of a box reaches; nothing at its upper and lower edge counts.
int Reach(const QImage& picture, const QRect& box);

/// The window program in a desktop.
class RunningWindow {
public:
    /// Its data and settings are in folders of its own. With `desktop`, waits until the window is there.
    RunningWindow(Desktop* desktop, const Folder& home, const std::vector<std::string>& arguments = {},
                  Child::Setting setting = {});

    Child& Process() { return Program_; }
    /// Opens a menu, and chooses its entry by the letter that is underlined.
    void Choose(const std::string& menuKey, const std::string& letter, const Effect& effect);
    [[nodiscard]] bool MenuOpens(const std::string& menuKey);
    bool IsMenuOrBoxOpen() { return Screen_->Windows().size() > 1; }
    /// Whether there is a message box that has the keyboard.
    bool IsAsking();
    /// Waits for that.
    bool Asks();
    /// Presses keys in the box until it is gone.
    void Answer(const std::string& keys);
    /// Waits until a part of the screen looks otherwise than before.
    bool Changes(const QRect& part, const QImage& before);
    /// Waits until a colour is seen, and says where.
    QRect Find(QRgb colour);

private:
    Desktop* Screen_;
    Child Program_;
    std::string Main_;
};

} // namespace live
