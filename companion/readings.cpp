// SPDX-License-Identifier: MIT
#include "companion/readings.h"

#include "src/blob/blob_text.h"

namespace companion {

Text NameOf(platform::Fate fate) {
    using platform::Fate;
    switch (fate) {
    case Fate::Taken:
        return u"taken";
    case Fate::Replaced:
        return u"replaced";
    case Fate::Kept:
        return u"kept";
    case Fate::OpenField:
        return u"openfield";
    case Fate::NoRow:
        return u"norow";
    case Fate::NoColumn:
        return u"nocolumn";
    case Fate::NoRecord:
        return u"norecord";
    case Fate::NoType:
        return u"notype";
    case Fate::OffScreen:
        return u"offscreen";
    case Fate::Trace:
        return u"trace";
    case Fate::Origin:
        return u"origin";
    case Fate::Connect:
        return u"connect";
    case Fate::Shape:
        return u"shape";
    case Fate::Waiting:
        return u"waiting";
    case Fate::Emptied:
        break;
    }
    return u"emptied";
}

void ReadingReports::TextReceived(platform::TextSource source, TextView characters) {
    for (platform::ReadingLog* observer : Observers_)
        observer->TextReceived(source, characters);
}

void ReadingReports::DecodingBegins() {
    for (platform::ReadingLog* observer : Observers_)
        observer->DecodingBegins();
}

void ReadingReports::ResultComes(const platform::Reading& result) {
    for (platform::ReadingLog* observer : Observers_)
        observer->ResultComes(result);
}

void ReadingReports::TextEmptied(TextView characters) {
    for (platform::ReadingLog* observer : Observers_)
        observer->TextEmptied(characters);
}

void ReadingReports::ReadingJudged(const platform::Verdict& verdict) {
    for (platform::ReadingLog* observer : Observers_)
        observer->ReadingJudged(verdict);
}

void ReadingReports::RowChanged(const platform::RowChange& change) {
    for (platform::ReadingLog* observer : Observers_)
        observer->RowChanged(change);
}

const KeptReadings::Row* KeptReadings::Number(std::size_t n) const {
    return n > Dropped_ && n <= Count() ? &Rows_[n - 1 - Dropped_] : nullptr;
}

void KeptReadings::ReadingJudged(const platform::Verdict& verdict) {
    const platform::Reading& reading = verdict.Reading;
    Rows_.push_back(
        {verdict.Fate, reading.Blob ? reading.Blob : std::make_shared<const Text>(modBLob::BlobOf(reading))});
    Characters_ += Rows_.back().Blob->size();
    while (Characters_ > Capacity && Rows_.size() > 1) {
        Characters_ -= Rows_.front().Blob->size();
        Rows_.pop_front();
        ++Dropped_;
    }
}

} // namespace companion
