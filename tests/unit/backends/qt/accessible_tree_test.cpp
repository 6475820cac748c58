// SPDX-License-Identifier: MIT
// The whole window as a screen reader finds it, compared with accessible_tree.txt. UPDATE_GOLDEN=1 rewrites that file;
// a person then reads the difference.
#include "backends/qt/conversions.h"
#include "companion/words.h"
#include "tests/support/in_a_window.h"

#include <QAccessible>
#include <QMetaEnum>

#include <cstdlib>
#include <fstream>

namespace windowtest {
namespace {

constexpr const char* StoredTree = QUORIN_ACCESSIBLE_TREE;

class AccessibleTree : public InAWindow {
protected:
    /// Shows a record, its link, and a note.
    void ShowRecord() {
        OpenRecord("Place|Moisture|Remark\nNorth|23.4 %|\n");
        Press(Qt::Key_Down);
        Form().setWindowTitle(QStringLiteral("qrn0001 · record 1 of 1 · Meter — Quorin"));
        Form().SetLinkLine({"Link open: Com1", companion::LineLook::Alive, "Link open: Com1"});
        Raise(companion::DataFolder(u"/home/cleo/quorin"));
    }
    void Raise(const companion::Notice& notice) {
        Notices_.Raise(notice);
        Form().SetNotices(Notices_);
        Settle();
    }

private:
    companion::Notices Notices_;
};

std::string StatesOf(const QAccessible::State& state) {
    std::string states;
    const auto add = [&states](bool is, const char* name) { states += is ? std::string(" ") + name : ""; };
    add(state.focused, "focused");
    add(state.selected, "selected");
    add(state.disabled, "disabled");
    add(state.editable, "editable");
    add(state.offscreen, "offscreen");
    return states;
}

std::string Quoted(const char* label, const QString& text) {
    return text.isEmpty() ? "" : std::string(" ") + label + "\"" + text.toStdString() + "\"";
}

std::string LineOf(QAccessibleInterface& object) {
    const QString name = object.text(QAccessible::Name);
    const QString value = object.text(QAccessible::Value);
    std::string line = QMetaEnum::fromType<QAccessible::Role>().valueToKey(object.role());
    line += Quoted("", name);
    line += value == name ? "" : Quoted("value ", value);
    line += Quoted("description ", object.text(QAccessible::Description));
    line += StatesOf(object.state());
    for (const auto& [other, relation] : object.relations())
        if (other != nullptr && relation.testFlag(QAccessible::Label))
            line += Quoted("labelled by ", other->text(QAccessible::Name));
    return line;
}

/// The lines of what is visible; what is only a place for others has no line of its own.
void Walk(QAccessibleInterface& object, const std::string& indent, std::string& lines) {
    if (object.state().invisible)
        return;
    const bool isPlace = object.role() == QAccessible::Client && object.text(QAccessible::Name).isEmpty();
    if (!isPlace)
        lines += indent + LineOf(object) + "\n";
    for (int at = 0; at < object.childCount(); ++at)
        if (QAccessibleInterface* const child = object.child(at))
            Walk(*child, isPlace ? indent : indent + "  ", lines);
}

TEST_F(AccessibleTree, IsWhatAScreenReaderShouldFind) {
    std::string found;
    const auto read = [&](const char* heading) {
        found += std::string("# ") + heading + "\n";
        Walk(*QAccessible::queryAccessibleInterface(&Form()), "", found);
    };
    ShowRecord();
    read("a record");
    Raise(companion::PortOffered(u"Port ttyUSB0 was plugged in."));
    read("an offer");
    Raise(companion::DraftNotKept(u"the disk is full"));
    Raise(companion::RightsNotKept(u"settings.ini"));
    read("two warnings");
    if (std::getenv("UPDATE_GOLDEN") != nullptr)
        std::ofstream(StoredTree, std::ios::binary) << found;
    std::ifstream in(StoredTree, std::ios::binary);
    EXPECT_EQ(found, std::string((std::istreambuf_iterator<char>(in)), {}));
}

} // namespace
} // namespace windowtest
