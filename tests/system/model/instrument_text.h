// SPDX-License-Identifier: MIT
// What the program must make of the text that an instrument sends, told once more in a few plain lines.
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

/// Text in UTF-8 throughout.
class InstrumentText {
public:
    explicit InstrumentText(Ledger& ledger) : Results_(&ledger) {}

    /// Characters as they come over the line. A line is one once CR LF has come; whether it ends with an end tag in its
    /// exact form, which is what the decoding waits for.
    bool Arrive(const std::string& characters);
    /// A mailbox file, whose lines end in LF or CR LF; whether there was any.
    bool TakeMailbox(const std::string& bytes);

    /// Hands all lines that have come to the decoding; whether readings are to be captured now. The lines stay until
    /// ForgetLines.
    bool Decode();
    /// The decoding is over: the lines go, and what has come meanwhile goes with them.
    void ForgetLines();
    /// The program has ended: nothing of this is anywhere else.
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
    std::string Begun_; ///< no line yet
    std::string Ready_;
    std::size_t Decoded_ = 0; ///< characters of Ready that the decoding has seen
    std::string Buffer_;      ///< lines that end in CR, of no complete record
};

} // namespace shift
