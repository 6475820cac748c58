// SPDX-License-Identifier: MIT
// What a screen reader would say.
#pragma once

#include "backends/qt/to_screen_reader.h"

#include <QAccessible>

#include <string>
#include <vector>

namespace windowtest {

/// Records the words of the notifications while this listener exists.
class HeardNotices {
public:
    HeardNotices() {
        All.clear();
        backends::qt::ToScreenReader::IsActive = [] { return true; };
        backends::qt::ToScreenReader::Send = [](QAccessibleEvent* event) {
            QAccessibleInterface* const about = event->accessibleInterface();
            if (event->type() == QAccessible::ObjectShow && about->role() == QAccessible::Notification)
                All.push_back(about->text(QAccessible::Name).toStdString());
        };
    }
    HeardNotices(const HeardNotices&) = delete;
    HeardNotices& operator=(const HeardNotices&) = delete;
    ~HeardNotices() {
        backends::qt::ToScreenReader::IsActive = QAccessible::isActive;
        backends::qt::ToScreenReader::Send = QAccessible::updateAccessibility;
    }

    static inline std::vector<std::string> All;
};

} // namespace windowtest
