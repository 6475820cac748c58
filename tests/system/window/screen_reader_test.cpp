// SPDX-License-Identifier: MIT
// What a screen reader gets of the real window, on a session bus of its own.
#include "tests/system/window/running_window.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <regex>

namespace live {
namespace {

using testing::HasSubstr;

const QString Accessible = QStringLiteral("org.a11y.atspi.Accessible");
constexpr const char* Needed[] = {"/usr/share/dbus-1/services/org.a11y.Bus.service", "/usr/bin/dbus-daemon",
                                  "/usr/bin/dbus-monitor"};

/// A program and one of its objects, on the bus of screen readers.
struct Place {
    QString Program;
    QString Path;
};

class Bus {
public:
    explicit Bus(const QString& address, const char* name)
        : Name_(QString::fromLatin1(name)), Connection_(QDBusConnection::connectToBus(address, Name_)) {}
    Bus(const Bus&) = delete;
    Bus& operator=(const Bus&) = delete;
    ~Bus() { QDBusConnection::disconnectFromBus(Name_); }

    /// Returns the first result of a call; nothing if it fails.
    QVariant Call(const Place& place, const QString& interface, const char* method, const QVariantList& words = {}) {
        QDBusMessage call =
            QDBusMessage::createMethodCall(place.Program, place.Path, interface, QString::fromLatin1(method));
        call.setArguments(words);
        const QDBusMessage answer = Connection_.call(call, QDBus::Block, 10'000);
        const bool isAnswered = answer.type() == QDBusMessage::ReplyMessage && !answer.arguments().isEmpty();
        return isAnswered ? answer.arguments().front() : QVariant();
    }
    std::string Property(const Place& place, const char* name) {
        const QVariant value = Call(place, QStringLiteral("org.freedesktop.DBus.Properties"), "Get",
                                    {Accessible, QString::fromLatin1(name)});
        return value.value<QDBusVariant>().variant().toString().toStdString();
    }
    std::string Role(const Place& place) { return Call(place, Accessible, "GetRoleName").toString().toStdString(); }
    std::vector<Place> Children(const Place& place) {
        std::vector<Place> children;
        const QVariant answer = Call(place, Accessible, "GetChildren");
        if (!answer.isValid())
            return children;
        const auto list = answer.value<QDBusArgument>();
        for (list.beginArray(); !list.atEnd();) {
            Place child;
            QDBusObjectPath path;
            list.beginStructure();
            list >> child.Program >> path;
            list.endStructure();
            child.Path = path.path();
            children.push_back(child);
        }
        list.endArray();
        return children;
    }
    bool IsShown(const Place& place) {
        constexpr quint32 Showing = 1U << 25U; // in the first word of the states
        QList<quint32> states;
        const QVariant answer = Call(place, Accessible, "GetState");
        if (answer.isValid())
            answer.value<QDBusArgument>() >> states;
        return !states.isEmpty() && (states.front() & Showing) != 0;
    }

private:
    QString Name_;
    QDBusConnection Connection_;
};

/// A session bus and what a session has on it for screen readers.
class ScreenReaderStory : public testing::Test {
protected:
    void SetUp() override {
        for (const char* const file : Needed)
            if (!std::filesystem::exists(file))
                GTEST_SKIP() << "takes the packages at-spi2-core and dbus";
        Session.emplace(std::vector<std::string>{"dbus-daemon", "--session", "--nofork", "--print-address"},
                        Child::Setting{{{"DISPLAY", Screen.Display()}, {"XDG_RUNTIME_DIR", Home.Path()}}, nullptr});
        ASSERT_TRUE(Eventually([this] { return Session->Output().find('\n') != std::string::npos; }));
        Address = Session->Output().substr(0, Session->Output().find('\n'));
        Bus session(QString::fromStdString(Address), "session");
        const QVariant address = session.Call({QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus")},
                                              QStringLiteral("org.a11y.Bus"), "GetAddress");
        ASSERT_TRUE(address.isValid());
        AddressOfReaders = address.toString();
        Readers.emplace(AddressOfReaders, "readers");
    }

    /// Opens a record whose Moisture has a value.
    void OpenRecord() {
        Home.Put("root/Quorin/drivers.txt", "NAME|INFFILE\nMeter|meter.txt\n");
        Home.Put("root/Quorin/meter.txt", "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n"
                                          "Moisture|1||Moisture||||\nRemark|1||||||\n");
        Home.Put("root/Quorin/qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n");
        Home.Put("root/Quorin/qrn0001.txt", "Moisture|Remark\n23.4 %|\n");
        Home.Put("root/settings.ini", "[Settings]\nComPort=Com1\n");
        Window.emplace(
            &Screen, Home,
            std::vector<std::string>{"--root", Home.Path("root"), "--port", "1=" + Home.Path("line"), "qrn0001.txt"},
            Child::Setting{{{"DBUS_SESSION_BUS_ADDRESS", Address}, {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1"}},
                           nullptr});
        ASSERT_TRUE(Eventually([this] { return WhatIsRead().find("Moisture") != std::string::npos; })) << WhatIsRead();
    }

    /// Returns a line for each visible object of the program that has a name.
    std::string WhatIsRead() {
        std::string lines;
        const Place desktop{QStringLiteral("org.a11y.atspi.Registry"),
                            QStringLiteral("/org/a11y/atspi/accessible/root")};
        for (const Place& program : Readers->Children(desktop))
            for (const Place& window : Readers->Children(program))
                Read(window, lines);
        return lines;
    }

    /// Returns the words of the notifications that came into view, by what dbus-monitor wrote.
    std::string WhatIsSaid(const std::string& signalsOfStates) {
        static const std::regex shown("sender=(\\S+) [^\n]*path=([^;]+);[^\n]*\n +string \"showing\"\n +int32 1\n");
        std::string words;
        for (std::sregex_iterator at(signalsOfStates.begin(), signalsOfStates.end(), shown), end; at != end; ++at) {
            const Place place{QString::fromStdString((*at)[1]), QString::fromStdString((*at)[2])};
            if (Readers->Role(place) == "notification")
                words += Readers->Property(place, "Name") + "\n";
        }
        return words;
    }

    Folder Home;
    Desktop Screen;
    std::optional<Child> Session;
    std::string Address;
    QString AddressOfReaders;
    std::optional<Bus> Readers;
    std::optional<RunningWindow> Window;

private:
    void Read(const Place& place, std::string& lines) {
        if (!Readers->IsShown(place))
            return;
        if (const std::string name = Readers->Property(place, "Name"); !name.empty())
            lines += Readers->Role(place) + " \"" + name + "\"\n";
        for (const Place& child : Readers->Children(place))
            Read(child, lines);
    }
};

TEST_F(ScreenReaderStory, ReadsTheWindowTheRowsAndTheNotices) {
    ASSERT_NO_FATAL_FAILURE(OpenRecord());
    const std::string title = "frame \"qrn0001 · record 1 of 1 · Meter\"\n";
    EXPECT_TRUE(Eventually([&] { return WhatIsRead().rfind(title, 0) == 0; }));
    EXPECT_THAT(WhatIsRead(), HasSubstr("table \"Download, 1/1\"\n"
                                        "cell \"Moisture\"\ncell \"Moisture: 23.4 %\"\n"
                                        "cell \"Remark\"\ncell \"Remark: empty\"\n"));
    // A worse notice, of a link that is still coming up, may stand in its place for a moment.
    const std::string data = "label \"Data: " + Home.Path("root/Quorin") + "\"\n";
    EXPECT_TRUE(Eventually([&] { return WhatIsRead().find(data) != std::string::npos; })) << WhatIsRead();
}

TEST_F(ScreenReaderStory, HearsANotice) {
    const Child monitor({"dbus-monitor", "--address", AddressOfReaders.toStdString(),
                         "type='signal',interface='org.a11y.atspi.Event.Object',member='StateChanged'"});
    ASSERT_TRUE(Eventually([&] { return monitor.Output().find("NameAcquired") != std::string::npos; }));
    Readers->Call({QStringLiteral("org.a11y.atspi.Registry"), QStringLiteral("/org/a11y/atspi/registry")},
                  QStringLiteral("org.a11y.atspi.Registry"), "RegisterEvent",
                  {QStringLiteral("object:state-changed:showing"), QStringList(), QString()});
    ASSERT_NO_FATAL_FAILURE(OpenRecord());
    EXPECT_TRUE(Eventually([&] {
        return WhatIsSaid(monitor.Output()).find("Data: " + Home.Path("root/Quorin")) != std::string::npos;
    })) << WhatIsSaid(monitor.Output());
}

} // namespace
} // namespace live
