// SPDX-License-Identifier: MIT
// The device itself: what it reports, its keys, its links, its sound, its clock.
#pragma once

#include "src/view/platform/controls.h"
#include "src/view/platform/errors.h"

#include <memory>

namespace platform {

/// The system object. All of it is fixed for a run but the working area.
class SystemObject {
public:
    virtual ~SystemObject() = default;
    virtual std::int32_t DeviceType() const = 0; ///< see DeviceKind
    virtual Text VersionText() const = 0;        ///< of the operating system, such as "5.2"
    virtual Text UserName() const = 0;
    virtual Box WorkArea() const = 0;                 ///< pixels
    virtual std::int32_t ScreenDimension() const = 0; ///< pixels of the screen's longer side
};

/// Hardware keys that the form wants, or gives back to the platform.
class HardwareKeys {
public:
    virtual ~HardwareKeys() = default;
    virtual void Grab(std::int32_t keyCode) = 0;
    virtual void Release(std::int32_t keyCode) = 0;
    virtual void SendCharacter(std::int32_t character) = 0; ///< into the platform's key queue
};

/// Why the serial port raised its event.
enum class PortEvent : std::int32_t { CharactersReceived = 2 };

/// The serial port control. Its receive event is raised while at least `ReceiveThreshold` characters wait, the
/// threshold is above 0 and the port is open: characters that come while the threshold is 0 raise it afterwards.
class SerialPort {
public:
    virtual ~SerialPort() = default;
    virtual void SetPortId(std::int32_t number) = 0;
    virtual void SetLineSettings(const Text& settings) = 0; ///< speed, parity, data bits, stop bits: "9600,N,8,1"
    virtual void SetReceiveThreshold(std::int32_t characters) = 0;
    virtual bool PortOpen() const = 0; ///< false as well once the device behind an open port has gone
    /// Opens or closes it. Opening fails with the platform's number and leaves it closed. Characters that nobody has
    /// read are gone when it closes.
    virtual ErrorNumber SetPortOpen(bool open) = 0;
    virtual std::int32_t InBufferCount() const = 0; ///< characters waiting
    /// Takes all waiting characters. Bytes are read as UTF-8 where they are valid UTF-8 and as Windows-1252 elsewhere.
    virtual Text ReadInput() = 0;
    virtual PortEvent LastEvent() const = 0; ///< why the event was raised
};

/// What a named connection leaves behind: it is only kept.
class Connection {
public:
    virtual ~Connection() = default;
};

class ConnectionService {
public:
    virtual ~ConnectionService() = default;
    /// Opens a connection by name and gives its object, or the platform's error number and no object.
    virtual ErrorNumber Open(const Text& name, std::unique_ptr<Connection>& connection) = 0;
};

class Tone {
public:
    virtual ~Tone() = default;
    /// Starts it and returns; a device without sound stays silent.
    virtual void Play(std::int32_t argument) = 0;
};

class ToneMaker {
public:
    virtual ~ToneMaker() = default;
    virtual std::unique_ptr<Tone> MakeTone(std::int32_t hertz, std::int32_t milliseconds) = 0;
};

struct DateTime {
    CalendarDate Date;
    std::int32_t Hour = 0; ///< 0 to 23
    std::int32_t Minute = 0;
    std::int32_t Second = 0;
    std::int64_t WholeSeconds = 0; ///< the same moment as a running count of seconds, for differences
};

class Clock {
public:
    virtual ~Clock() = default;
    virtual DateTime Now() const = 0; ///< local date and time, whole seconds
    /// Seconds since midnight, with fractions as fine as 32 bits hold them. It goes on from what the clock showed at
    /// the start, whatever is done to the clock since, and runs backwards at midnight alone.
    virtual float TimeOfDay() const = 0;
    /// The same count in whole seconds, for what has passed between two moments: a sleep of the device counts, setting
    /// the clock does not.
    virtual std::int64_t SteadySeconds() const = 0;
};

class Random {
public:
    virtual ~Random() = default;
    virtual void Seed(std::int32_t number) = 0; ///< the same seed gives the same numbers
    virtual double Next() = 0;                  ///< from 0 up to, but never, 1
};

class Settings {
public:
    virtual ~Settings() = default;
    virtual Text Get(const Text& application, const Text& section, const Text& key, const Text& byDefault) const = 0;
    virtual ErrorNumber Save(const Text& application, const Text& section, const Text& key, const Text& value) = 0;
};

} // namespace platform
