// SPDX-License-Identifier: MIT
// A second, simple implementation of what the program must make of the text that an instrument sends.
#pragma once

#include "tests/system/model/ledger.h"

#include <deque>
#include <string>
#include <vector>

namespace shift {

struct Reading {
    std::vector<std::string> Types;
    std::vector<std::string> Variables; ///< name=value
    std::string Value;
    std::string Unit;

    std::string Shown() const { return Value + " " + Unit; }
};

bool SameInAnyCase(const std::string& a, const std::string& b);

/// The text of the link, in UTF-8.
class InstrumentText {
public:
    explicit InstrumentText(Ledger& ledger) : Results_(&ledger) {}

    /// Adds characters as they come over the line. A line is complete when CR LF has come. Returns true if a line
    /// is now complete, and the last such line is an end tag in its exact form, which starts the decoding.
    bool Arrive(const std::string& characters);
    /// Adds a mailbox file, whose lines end in LF or CR LF. Returns true if it has a line.
    bool TakeMailbox(const std::string& bytes);

    /// Decodes all lines that have come. Returns true if readings are to be captured now. The lines stay until
    /// ForgetLines.
    bool Decode();
    /// Removes the lines after the decoding, and also the lines that have come meanwhile.
    void ForgetLines();
    /// Removes everything when the program ends, because nothing of this is in a file.
    void Lose();

    std::deque<Reading> Waiting; ///< decoded and not captured yet
    std::string Connected;       ///< the instrument; empty for none
    const std::string& Noise() const { return Buffer_; }
    const std::string& Lines() const { return Ready_; }
    const std::string& Unfinished() const { return Begun_; }

private:
    bool MoveLines();
    bool DecodeRecord(const std::string& record);
    void TakeReadings(const std::string& record);
    bool ExtractRecords();

    Ledger* Results_;
    std::string Begun_; ///< an incomplete line
    std::string Ready_;
    std::size_t Decoded_ = 0; ///< characters of Ready_ that have been decoded
    std::string Buffer_;      ///< lines that end in CR and belong to no complete record
};

} // namespace shift
