// SPDX-License-Identifier: MIT
// The device: what it reports of itself, its keys, its links, its sound, its clock, its settings.
#pragma once

#include "src/view/platform/controls.h"
#include "src/view/platform/errors.h"

#include <memory>

namespace platform {

/// The system object. Only the working area changes during a run.
class SystemObject {
public:
    virtual ~SystemObject() = default;
    virtual std::int32_t DeviceType() const = 0; ///< see DeviceKind
    virtual Text VersionText() const = 0;        ///< of the operating system, such as "5.2"
    virtual Text UserName() const = 0;
    virtual Box WorkArea() const = 0;                 ///< pixels
    virtual std::int32_t ScreenDimension() const = 0; ///< the longer side of the screen, in pixels
};

/// Hardware keys that the form requests from the platform, or returns to it.
class HardwareKeys {
public:
    virtual ~HardwareKeys() = default;
    virtual void Grab(std::int32_t keyCode) = 0;
    virtual void Release(std::int32_t keyCode) = 0;
    virtual void SendCharacter(std::int32_t character) = 0; ///< adds it to the platform's key queue
};

/// The cause of an event of the serial port.
enum class PortEvent : std::int32_t { CharactersReceived = 2 };

/// The serial port control. Its receive event is raised while the port is open, the threshold is above 0 and at least
/// that many characters wait. Characters that arrive while the threshold is 0 raise it once the threshold is above 0.
class SerialPort {
public:
    virtual ~SerialPort() = default;
    virtual void SetPortId(std::int32_t number) = 0;
    virtual void SetLineSettings(const Text& settings) = 0; ///< speed, parity, data bits, stop bits: "9600,N,8,1"
    virtual void SetReceiveThreshold(std::int32_t characters) = 0;
    virtual bool PortOpen() const = 0; ///< also false once the device of an open port was removed
    /// Opens or closes the port. If opening fails, returns the platform's error number and the port stays closed.
    /// Closing drops all characters that were not read.
    virtual ErrorNumber SetPortOpen(bool open) = 0;
    virtual std::int32_t InBufferCount() const = 0; ///< characters waiting
    /// Returns and removes all waiting characters. Bytes are decoded as UTF-8 where they are valid UTF-8 and as
    /// Windows-1252 elsewhere.
    virtual Text ReadInput() = 0;
    virtual PortEvent LastEvent() const = 0; ///< the cause of the last event
};

/// An open named connection. It has no operations; its owner only keeps it.
class Connection {
public:
    virtual ~Connection() = default;
};

class ConnectionService {
public:
    virtual ~ConnectionService() = default;
    /// Opens a connection by name. On success returns NoError and sets `connection`. On failure returns the platform's
    /// error number and sets no object.
    virtual ErrorNumber Open(const Text& name, std::unique_ptr<Connection>& connection) = 0;
};

class Tone {
public:
    virtual ~Tone() = default;
    /// Starts the tone and returns at once. Does nothing on a device without sound.
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
    std::int64_t WholeSeconds = 0; ///< the same moment as a running count of seconds, for computing differences
};

class Clock {
public:
    virtual ~Clock() = default;
    virtual DateTime Now() const = 0; ///< local date and time, in whole seconds
    /// Returns the seconds since midnight, with the fractions that 32 bits can hold. It runs on from the clock's time
    /// at program start, even if the clock is set meanwhile, and goes back only at midnight.
    virtual float TimeOfDay() const = 0;
    /// Returns a count of whole seconds, to measure the time between two moments. Time in which the device sleeps is
    /// counted; setting the clock has no effect.
    virtual std::int64_t SteadySeconds() const = 0;
};

class Random {
public:
    virtual ~Random() = default;
    virtual void Seed(std::int32_t number) = 0; ///< the same seed produces the same numbers
    virtual double Next() = 0;                  ///< at least 0 and below 1
};

class Settings {
public:
    virtual ~Settings() = default;
    /// Returns `byDefault` if the key was never stored.
    virtual Text Get(const Text& application, const Text& section, const Text& key, const Text& byDefault) const = 0;
    virtual ErrorNumber Save(const Text& application, const Text& section, const Text& key, const Text& value) = 0;
};

} // namespace platform
