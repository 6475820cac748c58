// SPDX-License-Identifier: MIT
// The real window program on an X server of its own, the hand of the person at it, and what that person sees.
#pragma once

#include <QImage>
#include <QRect>

#include <chrono>
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

/// A folder that is gone with the test.
class Folder {
public:
    Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder();
    std::string Path(const std::string& name = "") const { return name.empty() ? Place : Place + "/" + name; }
    /// Writes a file, with the folders above it.
    void Put(const std::string& name, const std::string& bytes) const;
    /// The bytes of a file; empty when it is not there.
    std::string Bytes(const std::string& name) const;

private:
    std::string Place;
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

    int Id() const { return Process; }
    void Signal(int number) const;
    bool HasEnded();
    /// Waits for the end; -1 when it was a signal's, or did not come.
    int ExitStatus();
    std::string Output() const { return Streams.Bytes("output"); }
    std::string Errors() const { return Streams.Bytes("errors"); }

    long MemoryKilobytes() const;
    /// The time that it has kept a processor busy, in seconds.
    double ProcessorSeconds() const;

private:
    Folder Streams;
    int Process = -1;
    std::optional<int> Status;
};

/// An X server with a window manager, and a mouse and a keyboard at it.
class Desktop {
public:
    Desktop();

    const std::string& Display() const { return Name; }
    /// What is on the screen.
    QImage Picture() const;
    void MoveTo(QPoint place) { Do({"mousemove", std::to_string(place.x()), std::to_string(place.y())}); }
    /// The pointer is out of the way afterwards.
    void Click(QPoint place);
    void Press(const std::string& key) { Do({"key", key}); }
    void Type(const std::string& text) { Do({"type", "--delay", "30", text}); }
    /// The windows that can be seen, the first to come first. Menus and boxes are windows of their own.
    std::vector<std::string> Windows() const;
    std::string ActiveWindow() const;

private:
    std::string Do(const std::vector<std::string>& words) const;

    Folder Frames;
    std::string Name;
    std::unique_ptr<Child> Server;
    std::unique_ptr<Child> Manager;
};

/// Where a colour is to be seen, 0xRRGGBB; an empty box when it is not. `around`: each of its three parts may be off by
/// so much, as in a shaded face.
QRect BoxOf(const QImage& picture, QRgb colour, int around = 0);
/// How many pixels of a box have not its most frequent colour: text, more or less of it.
int Ink(const QImage& picture, const QRect& box);

/// The window program in a desktop.
class RunningWindow {
public:
    /// Its data and settings are in folders of its own. With `desktop`, waits until the window is there.
    RunningWindow(Desktop* desktop, const Folder& home, const std::vector<std::string>& arguments = {},
                  Child::Setting setting = {});

    Child& Process() { return Program; }
    /// Opens a menu, and chooses its entry by the letter that is underlined.
    void Choose(const std::string& menuKey, const std::string& letter);
    bool MenuOpens(const std::string& menuKey);
    /// Waits for a message box that has the keyboard.
    bool Asks();
    /// Presses keys in the box and waits until it is gone.
    void Answer(const std::string& keys);
    /// Clicks as a person does: once more where it had no effect. A page that was just filled paints itself again a
    /// tenth of a second later, and closes what was opened under a quicker finger.
    bool ClickUntil(const std::function<bool()>& holds, const std::function<QPoint()>& place);
    /// Waits until a part of the screen looks otherwise than before.
    bool Changes(const QRect& part, const QImage& before);
    bool Changes(const QRect& part, const QImage& before, std::chrono::milliseconds patience);
    /// Waits until a colour is seen, and says where.
    QRect Find(QRgb colour);

private:
    Desktop* Screen;
    Child Program;
    std::string Main;
};

} // namespace live
