// SPDX-License-Identifier: MIT
#include "backends/qt/to_screen_reader.h"

#include <QAccessibleObject>

namespace backends::qt {

namespace {

/// What was announced last on behalf of its parent, a widget.
class Announcement final : public QObject {
public:
    using QObject::QObject;
    QString Words;
};

class AccessibleAnnouncement final : public QAccessibleObject {
public:
    explicit AccessibleAnnouncement(Announcement& about) : QAccessibleObject(&about), About_(about) {}

    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(About_.parent()); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QString text(QAccessible::Text kind) const override { return kind == QAccessible::Name ? About_.Words : QString(); }
    QAccessible::Role role() const override { return QAccessible::Notification; }
    QAccessible::State state() const override { return {}; }

private:
    Announcement& About_;
};

QAccessibleInterface* MakeAccessibleAnnouncement(const QString&, QObject* object) {
    auto* const announcement = dynamic_cast<Announcement*>(object);
    return announcement != nullptr ? new AccessibleAnnouncement(*announcement) : nullptr;
}

Announcement& AnnouncementOf(QWidget& widget) {
    for (QObject* const child : widget.children())
        if (auto* const known = dynamic_cast<Announcement*>(child))
            return *known;
    QAccessible::installFactory(MakeAccessibleAnnouncement);
    return *new Announcement(&widget);
}

} // namespace

/// On Linux no alert of Qt's reaches a screen reader. What it reads aloud is a notification that comes into view.
void Announce(QWidget& widget, const QString& words) {
    if (!ToScreenReader::IsActive() || words.isEmpty())
        return;
    Announcement& announcement = AnnouncementOf(widget);
    announcement.Words = words;
    QAccessibleEvent shown(&announcement, QAccessible::ObjectShow);
    ToScreenReader::Send(&shown);
}

} // namespace backends::qt
