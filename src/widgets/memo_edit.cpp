// widgets/memo_edit.cpp — text field of several lines.
#include "widgets/memo_edit.h"

#include "widgets/text_edit.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QScrollBar>
#include <QTextBlock>

namespace orvan {

namespace {

QString stored(QString text) { return text.replace(u'\n', QStringLiteral("\r\n")); }

} // namespace

MemoEdit::MemoEdit(int maxLength, int width, int lines, QWidget* parent)
    : QPlainTextEdit(parent), limit_(maxLength), width_(width), lines_(lines) {
    setTabChangesFocus(true);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    connect(this, &QPlainTextEdit::textChanged, this, [this] {
        if (!loading_) emit edited();
    });
}

QString MemoEdit::value() const {
    const QString text = toPlainText();
    return text == loadedText_ ? loaded_ : stored(text);
}

void MemoEdit::setValue(const QString& value) {
    loading_ = true;
    setPlainText(value);
    loading_ = false;
    loaded_ = value;
    loadedText_ = toPlainText();
}

QSize MemoEdit::minimumSizeHint() const {
    const int height = fontMetrics().lineSpacing() * lines_ +
                       2 * (frameWidth() + static_cast<int>(document()->documentMargin()));
    return {fieldWidth(this, width_) + verticalScrollBar()->sizeHint().width(), height};
}

QSize MemoEdit::sizeHint() const { return minimumSizeHint(); }

void MemoEdit::keyPressEvent(QKeyEvent* event) {
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && event->modifiers().testFlag(Qt::ControlModifier)) {
        if (!event->isAutoRepeat()) emit done();
        return;
    }
    const bool adds = (isEnter || typesText(*event)) && !isReadOnly();
    if (adds && !fits(isEnter ? QStringLiteral("\n") : event->text())) return;
    if (event->key() == Qt::Key_Escape) { // the form's or the window's
        event->ignore();
        return;
    }
    QPlainTextEdit::keyPressEvent(event);
}

void MemoEdit::focusInEvent(QFocusEvent* event) {
    QPlainTextEdit::focusInEvent(event);
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason ||
        event->reason() == Qt::OtherFocusReason)
        moveCursor(QTextCursor::End);
}

// Qt's own menu is in the system's language.
void MemoEdit::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu(this);
    const bool marked = textCursor().hasSelection();
    menu.addAction(QStringLiteral("&Geri al\tCtrl+Z"), this, &QPlainTextEdit::undo)
        ->setEnabled(document()->isUndoAvailable());
    menu.addSeparator();
    menu.addAction(QStringLiteral("K&es\tCtrl+X"), this, &QPlainTextEdit::cut)
        ->setEnabled(marked && !isReadOnly());
    menu.addAction(QStringLiteral("&Kopyala\tCtrl+C"), this, &QPlainTextEdit::copy)->setEnabled(marked);
    menu.addAction(QStringLiteral("&Yapıştır\tCtrl+V"), this, &QPlainTextEdit::paste)
        ->setEnabled(!isReadOnly() && canPaste());
    menu.addSeparator();
    menu.addAction(QStringLiteral("&Tümünü seç\tCtrl+A"), this, &QPlainTextEdit::selectAll);
    menu.exec(event->globalPos());
}

void MemoEdit::insertFromMimeData(const QMimeData* source) {
    if (fits(source->text())) QPlainTextEdit::insertFromMimeData(source);
}

bool MemoEdit::fits(const QString& added) {
    if (limit_ <= 0) return true;
    const auto length = [](const QString& text) { return text.size() + text.count(u'\n'); };
    const QString marked = textCursor().selectedText().replace(QChar::ParagraphSeparator, u'\n');
    QString lines = added;
    lines.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    if (length(toPlainText()) - length(marked) + length(lines) <= limit_) return true;
    emit refused(QStringLiteral("Bu alana en çok %1 karakter yazılabilir.").arg(limit_));
    return false;
}

} // namespace orvan
