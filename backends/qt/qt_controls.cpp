// SPDX-License-Identifier: MIT
#include "backends/qt/qt_controls.h"

#include <QGuiApplication>
#include <QHeaderView>
#include <QInputMethod>
#include <QKeyEvent>
#include <QTableView>
#include <QTextBlock>
#include <QTextCharFormat>
#include <QToolButton>

#include <algorithm>
#include <limits>
#include <memory>

namespace backends::qt {

namespace {

/// A field covers its cell, so its border is one pixel wide, whatever the style draws elsewhere. The colours are those
/// of the form's palette: in a style sheet, Qt would take them from the desktop's, which may be dark.
QString FieldStyle(const QPalette& paper) {
    const auto colour = [&paper](QPalette::ColorRole role, QPalette::ColorGroup group = QPalette::Active) {
        return paper.color(group, role).name();
    };
    return QStringLiteral("QLineEdit, QPlainTextEdit { border: 1px solid %1; padding: 0px; background: %2; color: %3; "
                          "selection-background-color: %1; selection-color: %4; } "
                          "QLineEdit:disabled, QPlainTextEdit:disabled { color: %5; }")
        .arg(colour(QPalette::Highlight), colour(QPalette::Base), colour(QPalette::Text),
             colour(QPalette::HighlightedText), colour(QPalette::Text, QPalette::Disabled));
}

/// The text of a cell is one pixel from its edges. Qt's field has a border of that width, and leaves two more pixels at
/// the left and one more above.
constexpr QMargins LikeCell(-2, -1, 0, 0);

/// Qt does not move the caret to a position beyond the text.
void SelectIn(QLineEdit& line, std::int32_t position, std::int32_t length) {
    const auto size = static_cast<std::int32_t>(line.text().size());
    const std::int32_t from = std::clamp(position, 0, size);
    const std::int32_t count = std::clamp(length, 0, size - from);
    line.setSelection(from, count);
    if (count == 0)
        line.setCursorPosition(from);
}

/// Converts the line ends of a text for a page of Qt's, which has line feeds alone. FromPage converts back.
QString PageText(const Text& text) {
    QString page = ToQt(text);
    page.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    page.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return page;
}

/// Returns the text of a page. Qt's own toPlainText replaces non-breaking blanks by blanks.
QString PlainText(const QPlainTextEdit& page) {
    QString text = page.document()->toRawText();
    text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    text.replace(QChar::LineSeparator, QLatin1Char('\n'));
    return text;
}

Text FromPage(const QString& page) {
    QString text = page;
    text.replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
    return FromQt(text);
}

/// Converts a 0-based position in the text to one in the page: a line end is two characters of the text and one of the
/// page.
std::int32_t PagePlace(const Text& text, std::int32_t position) {
    const auto count = std::min(static_cast<std::size_t>(std::max(position, 0)), text.size());
    return static_cast<std::int32_t>(PageText(text.substr(0, count)).size());
}

std::int32_t TextPlace(const QString& page, std::int32_t position) {
    return static_cast<std::int32_t>(FromPage(page.left(position)).size());
}

/// Replaces each character of a line end by a blank.
QString OneLineOf(const Text& text) {
    Text line = text;
    std::replace_if(
        line.begin(), line.end(), [](char16_t unit) { return unit == u'\r' || unit == u'\n'; }, u' ');
    return ToQt(line);
}

/// Replaces pasted line ends by blanks, because they would make several lines of a file. Does nothing if there are no
/// more line ends than the program has set.
void KeepToOneLine(QLineEdit& line, const QString& text, qsizetype endsOfProgram) {
    const auto isEnd = [](QChar unit) {
        return unit == u'\r' || unit == u'\n' || unit == u'\u2028' || unit == u'\u2029';
    };
    if (std::count_if(text.begin(), text.end(), isEnd) <= endsOfProgram)
        return;
    QString kept = text;
    std::replace_if(kept.begin(), kept.end(), isEnd, QChar(u' '));
    const int place = line.cursorPosition();
    line.setText(kept);
    line.setCursorPosition(place);
}

void ReplaceIn(QLineEdit& line, const QString& text) {
    line.selectAll();
    line.insert(text);
    if (text.isEmpty())
        line.clear();
}

/// Tab moves the focus; it writes no tab where there is no other control.
class PageEdit final : public Composing<QPlainTextEdit> {
public:
    using Composing::Composing;

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab)
            return event->ignore();
        QPlainTextEdit::keyPressEvent(event);
    }
};

/// Up and down choose the item before or after the one that equals the text, also if the text was typed.
class Combo final : public QComboBox {
public:
    using QComboBox::QComboBox;

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() != Qt::Key_Up && event->key() != Qt::Key_Down)
            return QComboBox::keyPressEvent(event);
        const int next = findText(currentText(), Qt::MatchExactly | Qt::MatchCaseSensitive) +
                         (event->key() == Qt::Key_Down ? 1 : -1);
        if (next >= 0 && next < count())
            ReplaceIn(*lineEdit(), itemText(next));
    }
};

} // namespace

// --- text ------------------------------------------------------------------------------------------------------------

QtTextBox::QtTextBox(FormCanvas& form, Focus& focus, NativeFocus& native, const char* name)
    : NativeFontControl(form, focus, native, name), Line_(*new Composing<QLineEdit>(&form)),
      Page_(*new PageEdit(&form)) {
    for (QWidget* widget : {static_cast<QWidget*>(&Line_), static_cast<QWidget*>(&Page_)}) {
        widget->setObjectName(QString::fromLatin1(name));
        widget->setPalette(form.palette());
        widget->setStyleSheet(FieldStyle(form.palette()));
        widget->hide();
        native.Add(*this, *widget);
    }
    Line_.setTextMargins(LikeCell);
    Line_.setAlignment(Qt::AlignLeft | Qt::AlignTop);
    Line_.setMaxLength(std::numeric_limits<int>::max()); // Qt would cut a longer text
    Page_.setTabChangesFocus(true);
    QObject::connect(&Line_, &QLineEdit::textEdited, [this](const QString& text) {
        const auto ends =
            std::count_if(Value_.begin(), Value_.end(), [](char16_t unit) { return unit == u'\r' || unit == u'\n'; });
        KeepToOneLine(Line_, text, ends);
    });
    QObject::connect(&Line_, &QLineEdit::textChanged, [this] { Edited(); });
    QObject::connect(&Page_, &QPlainTextEdit::textChanged, [this] { Edited(); });
}

QWidget& QtTextBox::Widget() {
    if (Lines_)
        return Page_;
    return Line_;
}

void QtTextBox::Show() {
    {
        const NativeFocus::Quiet quiet(FocusOfQt());
        (Lines_ ? static_cast<QWidget&>(Line_) : Page_).hide();
    }
    NativeFontControl::Show();
}

void QtTextBox::TakeFont(const QFont& font) {
    Line_.setFont(font);
    Page_.setFont(font);
}

/// Writes the text into the widget. The caret keeps its position, or moves to the end of a shorter text.
void QtTextBox::Fill() {
    Filling_ = true;
    if (Lines_) {
        const int place = Page_.textCursor().position();
        Page_.setPlainText(PageText(Value_));
        QTextCursor cursor = Page_.textCursor();
        cursor.setPosition(std::min(place, static_cast<int>(PlainText(Page_).size())));
        Page_.setTextCursor(cursor);
    } else {
        const int place = Line_.cursorPosition();
        Line_.setText(ToQt(Value_));
        Line_.setCursorPosition(place);
    }
    Filling_ = false;
}

void QtTextBox::Edited() {
    if (Filling_)
        return;
    Text text = Lines_ ? FromPage(PlainText(Page_)) : FromQt(Line_.text());
    modStringTools::BlankNuls(text); // may have been pasted
    if (text == Value_)
        return;
    Value_ = text;
    if (Change)
        Change();
}

void QtTextBox::SetContents(const Text& text) {
    if (text != Value_) {
        Value_ = text;
        Fill();
    }
    if (Change)
        Change();
}

void QtTextBox::SetMultiLine(bool multiLine) {
    if (multiLine == Lines_)
        return;
    Lines_ = multiLine;
    Fill();
    Show();
}

/// An input method may ignore the request to commit: the text that it has composed is inserted here then.
void QtTextBox::Commit() {
    if (!Visible())
        return;
    QGuiApplication::inputMethod()->commit();
    const QString held = Lines_ ? Page_.Held : Line_.Held;
    if (held.isEmpty())
        return;
    QInputMethodEvent commit;
    commit.setCommitString(held);
    QCoreApplication::sendEvent(&Widget(), &commit);
    QGuiApplication::inputMethod()->reset();
}

void QtTextBox::Select(std::int32_t position, std::int32_t length) {
    const auto size = static_cast<std::int32_t>(Value_.size());
    const std::int32_t from = std::clamp(position, 0, size);
    const std::int32_t count = std::clamp(length, 0, size - from);
    if (Lines_) {
        QTextCursor cursor = Page_.textCursor();
        cursor.setPosition(PagePlace(Value_, from));
        cursor.setPosition(PagePlace(Value_, from + count), QTextCursor::KeepAnchor);
        Page_.setTextCursor(cursor);
    } else {
        SelectIn(Line_, from, count);
    }
}

std::int32_t QtTextBox::Caret() const {
    if (Lines_)
        return std::min(TextPlace(PlainText(Page_), Page_.textCursor().selectionStart()),
                        static_cast<std::int32_t>(Value_.size()));
    return Line_.hasSelectedText() ? Line_.selectionStart() : Line_.cursorPosition();
}

void QtTextBox::EnterCharacter(TextView character) {
    if (character.empty())
        return;
    if (Lines_ && character[0] == BackspaceCharacter)
        Page_.textCursor().deletePreviousChar();
    else if (character[0] == BackspaceCharacter)
        Line_.backspace();
    else if (Lines_ && (character[0] == u'\r' || character[0] == u'\n'))
        Page_.insertPlainText(QStringLiteral("\n"));
    else if (character[0] >= u' ' && Lines_)
        Page_.insertPlainText(ToQt(character));
    else if (character[0] >= u' ')
        Line_.insert(ToQt(character));
}

void QtTextBox::ReplaceText(const Text& text) {
    if (!Lines_)
        return ReplaceIn(Line_, OneLineOf(text));
    Page_.selectAll();
    Page_.insertPlainText(PageText(text));
}

// --- combo -----------------------------------------------------------------------------------------------------------

QtComboBox::QtComboBox(FormCanvas& form, Focus& focus, NativeFocus& native, const char* name)
    : NativeFontControl(form, focus, native, name), Combo_(*new class Combo(&form)) {
    Combo_.setObjectName(QString::fromLatin1(name));
    Combo_.setEditable(true);
    Combo_.setInsertPolicy(QComboBox::NoInsert);
    Combo_.lineEdit()->setMaxLength(std::numeric_limits<int>::max());
    Combo_.setCompleter(nullptr); // typed text is used as it is
    Combo_.hide();
    native.Add(*this, Combo_);
    native.Add(*this, *Combo_.lineEdit());
    QObject::connect(Combo_.lineEdit(), &QLineEdit::textEdited,
                     [this](const QString& text) { KeepToOneLine(*Combo_.lineEdit(), text, 0); });
}

/// The application sets no height: the control has the height that its text needs.
void QtComboBox::Show() {
    NativeFontControl::Show();
    QRect place = Form().Shown(Bounds());
    if (place.height() == 0)
        place.setHeight(Combo_.sizeHint().height());
    Combo_.setGeometry(place);
}

void QtComboBox::TakeName(const QString& name) {
    Combo_.setAccessibleName(name);
    Combo_.lineEdit()->setAccessibleName(name);
}

void QtComboBox::TakeFont(const QFont& font) {
    Combo_.setFont(font);
    Combo_.lineEdit()->setFont(font);
}

void QtComboBox::Select(std::int32_t position, std::int32_t length) {
    SelectIn(*Combo_.lineEdit(), position, length);
}

std::int32_t QtComboBox::Caret() const {
    const QLineEdit& line = *Combo_.lineEdit();
    return line.hasSelectedText() ? line.selectionStart() : line.cursorPosition();
}

/// Keeps the text: Qt would replace it by the first item of a list that was empty.
void QtComboBox::AddItem(const Text& item) {
    const QString text = Combo_.currentText();
    Combo_.addItem(ToQt(item));
    Combo_.setCurrentIndex(-1);
    Combo_.setEditText(text);
}

std::vector<Text> QtComboBox::Items() const {
    std::vector<Text> items;
    items.reserve(static_cast<std::size_t>(Combo_.count()));
    for (int index = 0; index < Combo_.count(); ++index)
        items.push_back(FromQt(Combo_.itemText(index)));
    return items;
}

void QtComboBox::EnterCharacter(TextView character) {
    if (character.empty())
        return;
    if (character[0] == BackspaceCharacter)
        Combo_.lineEdit()->backspace();
    else if (character[0] >= u' ')
        Combo_.lineEdit()->insert(ToQt(character));
}

void QtComboBox::ReplaceText(const Text& text) {
    ReplaceIn(*Combo_.lineEdit(), OneLineOf(text));
}

// --- date ------------------------------------------------------------------------------------------------------------

QtDatePicker::QtDatePicker(FormCanvas& form, Focus& focus, NativeFocus& native, const char* name)
    : NativeControl(form, focus, native, name), Month_(*new QCalendarWidget(&form)) {
    Month_.setObjectName(QString::fromLatin1(name));
    Month_.setMinimumDate(QDate(1, 1, 1));
    Month_.setMaximumDate(QDate(9999, 12, 31));
    Month_.setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    Month_.setGridVisible(true);
    QTextCharFormat weekend;
    weekend.setForeground(QColor(0xB0, 0x00, 0x20)); // Qt's red is too light to be read on white
    for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday})
        Month_.setWeekdayTextFormat(day, weekend);
    Month_.setDateEditEnabled(false); // a digit would open Qt's own field over the calendar
    Month_.hide();
    native.Add(*this, Month_);
    NameButtons();
    QObject::connect(&Month_, &QCalendarWidget::currentPageChanged, [this] { NameButtons(); });
    QObject::connect(&Month_, &QCalendarWidget::selectionChanged, [this] {
        const QDate date = Month_.selectedDate();
        Chosen_ = {date.year(), date.month(), date.day()};
    });
    QObject::connect(&Month_, &QCalendarWidget::clicked, [this](QDate date) {
        Chosen_ = {date.year(), date.month(), date.day()};
        if (Visible() && Closed)
            Closed();
    });
}

/// The arrows have no text, and the text of the others does not say what they are.
void QtDatePicker::NameButtons() {
    const QDate shown(Month_.yearShown(), Month_.monthShown(), 1);
    const auto name = [this](const char* button, const QString& said) {
        if (auto* const widget = Month_.findChild<QWidget*>(QString::fromLatin1(button)))
            widget->setAccessibleName(said);
    };
    name("qt_calendar_prevmonth", QStringLiteral("Previous month"));
    name("qt_calendar_nextmonth", QStringLiteral("Next month"));
    name("qt_calendar_monthbutton", QStringLiteral("Month: ") + Month_.locale().standaloneMonthName(shown.month()));
    name("qt_calendar_yearbutton", QStringLiteral("Year: ") + QString::number(shown.year()));
    name("qt_calendar_yearedit", QStringLiteral("Year"));
}

/// On a small screen the names of the days have one letter, and the font is as small as the height requires.
void QtDatePicker::Show() {
    const Box place = Bounds();
    constexpr float Roomy = 280;
    const bool small = place.Width < Roomy;
    Month_.setHorizontalHeaderFormat(small ? QCalendarWidget::SingleLetterDayNames : QCalendarWidget::ShortDayNames);
    QFont font = Month_.window()->font();
    constexpr float RowsOfCalendar = 9; // six weeks, the names of the days, and the head, which is higher
    font.setPixelSize(std::clamp(static_cast<int>(place.Height / RowsOfCalendar * 0.7F), 7, small ? 11 : 18));
    font = Form().Shown(font);
    Month_.setFont(font);
    for (QWidget* child : Month_.findChildren<QWidget*>())
        child->setFont(font);
    if (auto* const days = Month_.findChild<QTableView*>())
        days->horizontalHeader()->setMinimumSectionSize(1); // so that all seven days fit on a narrow screen
    NativeControl::Show();
}

/// The table of days is named too, because it has the focus.
void QtDatePicker::TakeName(const QString& name) {
    Month_.setAccessibleName(name);
    if (QWidget* const days = Month_.focusProxy())
        days->setAccessibleName(name);
}

void QtDatePicker::SetDate(const CalendarDate& date) {
    Month_.setSelectedDate(QDate(date.Year, date.Month, date.Day));
    Chosen_ = date;
}

// --- list ------------------------------------------------------------------------------------------------------------

QtListBox::QtListBox(FormCanvas& form, Focus& focus, NativeFocus& native, const char* name)
    : NativeControl(form, focus, native, name), List_(*new QListWidget(&form)) {
    List_.setObjectName(QString::fromLatin1(name));
    List_.hide();
    native.Add(*this, List_);
    QObject::connect(&List_, &QListWidget::itemClicked, [this] {
        if (Click)
            Click();
    });
}

void QtListBox::Show() {
    List_.setFont(Form().DesktopFont());
    NativeControl::Show();
}

Text QtListBox::ItemText(std::int32_t index) const {
    const QListWidgetItem* const item = List_.item(index);
    return item != nullptr ? FromQt(item->text()) : Text();
}

// --- label -----------------------------------------------------------------------------------------------------------

QtLabel::QtLabel(FormCanvas& form, Focus& focus, NativeFocus& native, const char* name)
    : NativeFontControl(form, focus, native, name), Strip_(*new QLabel(&form)) {
    Strip_.setObjectName(QString::fromLatin1(name));
    Strip_.setWordWrap(true);
    Strip_.setTextFormat(Qt::PlainText);
    Strip_.setAutoFillBackground(true);
    Strip_.hide();
}

void QtLabel::SetVisible(bool visible) {
    const bool wasVisible = Visible();
    if (wasVisible && !visible && Hiding)
        Hiding();
    NativeFontControl::SetVisible(visible);
    if (wasVisible && !visible && Hidden)
        Hidden();
}

void QtLabel::SetCaption(const Text& caption) {
    Value_ = caption;
    Strip_.setText(ToQt(caption));
    Strip_.setAccessibleName(ToQt(caption));
}

void QtLabel::SetBackColor(std::int32_t colour) {
    QPalette palette = Strip_.palette();
    palette.setColor(QPalette::Window, ColourOf(colour));
    Strip_.setPalette(palette);
}

void QtLabel::SetForeColor(std::int32_t colour) {
    QPalette palette = Strip_.palette();
    palette.setColor(QPalette::WindowText, ColourOf(colour));
    Strip_.setPalette(palette);
}

void QtLabel::Refresh() {
    Strip_.repaint();
    if (Visible() && Painted)
        Painted();
}

} // namespace backends::qt
