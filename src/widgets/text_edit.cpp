// widgets/text_edit.cpp — one-line text field.
#include "widgets/text_edit.h"

#include <algorithm>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMenu>

namespace orvan {

TextEdit::TextEdit(TextEntry entry, int maxLength, int width, QWidget* parent)
    : QLineEdit(parent), entry_(entry), limit_(maxLength), width_(width) {
    if (limit_ > 0) setMaxLength(limit_);
    setMinimumWidth(leastFieldWidth(this, width));
    setMaximumWidth(fieldWidth(this, width) * 3 / 2);
}

QSize TextEdit::sizeHint() const { return {fieldWidth(this, width_), QLineEdit::sizeHint().height()}; }

void TextEdit::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    if (event->reason() == Qt::MouseFocusReason || event->reason() == Qt::PopupFocusReason ||
        event->reason() == Qt::ActiveWindowFocusReason)
        return;
    placeCaret();
}

void TextEdit::placeCaret() {
    if (entry_ == TextEntry::Code) {
        selectAll();
    } else {
        deselect();
        end(false);
    }
}

void TextEdit::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Paste)) {
        pasteIfFits();
        return;
    }
    if (typesText(*event) && !fits(event->text())) return;
    QLineEdit::keyPressEvent(event);
}

// Qt's own menu is in the system's language and its Paste would cut what does not fit.
void TextEdit::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu(this);
    menu.addAction(QStringLiteral("&Geri al\tCtrl+Z"), this, &QLineEdit::undo)->setEnabled(isUndoAvailable());
    menu.addSeparator();
    menu.addAction(QStringLiteral("K&es\tCtrl+X"), this, &QLineEdit::cut)
        ->setEnabled(hasSelectedText() && !isReadOnly());
    menu.addAction(QStringLiteral("&Kopyala\tCtrl+C"), this, &QLineEdit::copy)->setEnabled(hasSelectedText());
    menu.addAction(QStringLiteral("&Yapıştır\tCtrl+V"), this, &TextEdit::pasteIfFits)
        ->setEnabled(!isReadOnly());
    menu.addSeparator();
    menu.addAction(QStringLiteral("&Tümünü seç\tCtrl+A"), this, &QLineEdit::selectAll);
    menu.exec(event->globalPos());
}

void TextEdit::putWhole(const QString& text) {
    if (limit_ > 0) setMaxLength(std::max(limit_, static_cast<int>(text.size())));
    setText(text);
    if (hasFocus())
        placeCaret(); // as if entered anew
    else
        setCursorPosition(0);
}

void TextEdit::retype(const QString& text) {
    if (text == this->text()) return;
    const QSignalBlocker quiet(this);
    selectAll();
    insert(text);
}

bool TextEdit::fits(const QString& added) {
    if (limit_ <= 0 || isReadOnly() || text().size() - selectedText().size() + added.size() <= limit_)
        return true;
    emit refused(QStringLiteral("Bu alana en çok %1 karakter yazılabilir.").arg(limit_));
    return false;
}

void TextEdit::pasteIfFits() {
    if (fits(QApplication::clipboard()->text())) paste();
}

bool typesText(const QKeyEvent& key) {
    const QString text = key.text();
    const auto commands = key.modifiers() & (Qt::ControlModifier | Qt::AltModifier);
    const bool isCommand = commands == Qt::ControlModifier || commands == Qt::AltModifier;
    return !isCommand && !text.isEmpty() && text[0].isPrint();
}

int fieldWidth(const QWidget* field, int characters) {
    const QFontMetrics metrics = field->fontMetrics();
    // capital letters are common in names; frame and text margins take about two letters more
    return metrics.horizontalAdvance(u'E') * characters + 2 * metrics.averageCharWidth();
}

int leastFieldWidth(const QWidget* field, int characters) {
    constexpr int kNarrow = 24;
    return fieldWidth(field, std::min(characters, kNarrow));
}

} // namespace orvan
