// SPDX-License-Identifier: MIT
#include "src/link/ports.h"

#include "src/link/mailbox.h"
#include "src/storage/settings.h"
#include "src/view/platform/device_traits.h"
#include "src/view/platform/platform.h"
#include "src/view/questions.h"

namespace modBluetooth {

using platform::Device;

namespace {

const Text Off = u"OFF";
const Text Server = u"SERVER";
const Text ComPrefix = u"com";
const Text LineSettings = u"9600,N,8,1";

bool BeginsWithCom(const Text& name) {
    return modStringTools::LowerCase(name.substr(0, ComPrefix.size())) == ComPrefix;
}

void TellFailureOnce(const Text& message) {
    if (Ports.LinkPortName == Ports.LastFailedPort)
        return;
    Ports.LastFailedPort = Ports.LinkPortName; // first: ticks go on while the message is open
    modPDAUI::Tell(message);
}

bool OpenServerLink() {
    SetMailboxPath();
    if (!MailboxServerRunning()) {
        TellFailureOnce(u"RFCOMM Server not running");
        return false;
    }
    Ports.NamedLinkOpen = true;
    Ports.ServerMode = true;
    return true;
}

bool OpenConnection() {
    Ports.ServerMode = false;
    const auto error = Device().connectionService.Open(Ports.LinkPortName, Ports.NamedConnection);
    if (error != platform::NoError) {
        TellFailureOnce(u"Failed: " + modStringTools::NumberText(platform::NumberOf(error)));
        return false;
    }
    Ports.NamedLinkOpen = true;
    return true;
}

bool OpenSerialPort(std::int32_t number) {
    auto& port = Device().serConnection;
    if (Ports.LinkOpen)
        return port.PortOpen();
    if (!port.PortOpen()) {
        port.SetPortId(number);
        port.SetLineSettings(LineSettings);
        port.SetReceiveThreshold(1);
        if (port.SetPortOpen(true) != platform::NoError)
            return false;
    }
    return port.PortOpen();
}

} // namespace

void ListPorts() {
    const platform::DeviceTraits& traits = platform::Traits();
    Ports.PortList = {Off};
    for (std::int32_t number = 1; number <= traits.ComPorts; ++number)
        Ports.PortList.push_back(u"Com" + modStringTools::NumberText(number));
    Ports.PortList.push_back(traits.OnlyPort.empty() ? Server : Text(traits.OnlyPort));
}

Text StoredPort() {
    return modQuorin::GetSetting(u"ComPort", Off);
}

std::optional<std::int32_t> PortNumber(const Text& port) {
    return modStringTools::NumberFromText(BeginsWithCom(port) ? port.substr(ComPrefix.size()) : port);
}

LinkKind KindOf(const Text& port) {
    if (port == Off)
        return LinkKind::None;
    if (port == Server)
        return LinkKind::Server;
    return platform::Traits().NamedPorts && !BeginsWithCom(port) ? LinkKind::Connection : LinkKind::Serial;
}

bool OpenLink() {
    const Text port = StoredPort();
    const LinkKind kind = KindOf(port);
    if (kind == LinkKind::None)
        return false;
    if (kind != LinkKind::Serial) {
        Ports.LinkPortName = port;
        Ports.LinkOpen = OpenNamedLink();
        return Ports.LinkOpen;
    }
    const auto number = PortNumber(port);
    if (!number)
        platform::RuntimeFailure(PortFailure());
    Ports.LinkOpen = OpenSerialPort(*number);
    return Ports.LinkOpen;
}

Text PortFailure() {
    const Text port = StoredPort();
    if (KindOf(port) != LinkKind::Serial || PortNumber(port))
        return {};
    const Text what = port.empty() ? Text(u"The setting ComPort is empty")
                                   : u"The setting ComPort holds \"" + port + u"\", which is not the number of a port";
    return what + u": choose a port under Preferences, Bluetooth Serial Setup...";
}

bool OpenNamedLink() {
    if (Ports.NamedLinkOpen)
        return true;
    return KindOf(Ports.LinkPortName) == LinkKind::Server ? OpenServerLink() : OpenConnection();
}

} // namespace modBluetooth
