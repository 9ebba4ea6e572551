// widgets/choice_list.cpp — combo box with a list that narrows while typing.
#include "widgets/choice_list.h"

#include "core/turkish_text.h"
#include "widgets/text_edit.h"

#include <algorithm>
#include <QAbstractItemView>
#include <QCompleter>
#include <QKeyEvent>
#include <QLineEdit>
#include <QStringListModel>
#include <QWheelEvent>

namespace orvan {

namespace {

constexpr int kVisibleChoices = 14;

enum MatchKind { Exact, Start, WordStart, Inside, None };

// Both already in lower case.
MatchKind matchKind(const QString& text, const QString& typed) {
    const qsizetype place = text.indexOf(typed);
    if (place < 0) return None;
    if (place == 0) return text.size() == typed.size() ? Exact : Start;
    for (qsizetype at = place; at >= 0; at = text.indexOf(typed, at + 1))
        if (!text[at - 1].isLetterOrNumber()) return WordStart;
    return Inside;
}

} // namespace

ChoiceList::ChoiceList(int width, QWidget* parent)
    : QComboBox(parent), completer_(new QCompleter(this)), matches_(new QStringListModel(this)),
      width_(width) {
    setEditable(true);
    setInsertPolicy(NoInsert);
    setFocusPolicy(Qt::StrongFocus);
    setMaxVisibleItems(kVisibleChoices);
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumWidth(leastFieldWidth(this, width));
    completer_->setModel(matches_);
    completer_->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    completer_->setMaxVisibleItems(kVisibleChoices);
    setCompleter(completer_);
    lineEdit()->setPlaceholderText(QStringLiteral("Seçmek için yazınız"));
    connect(lineEdit(), &QLineEdit::textEdited, this, &ChoiceList::showMatches);
    connect(this, &QComboBox::activated, this, &ChoiceList::choose);
}

QSize ChoiceList::sizeHint() const { return {fieldWidth(this, width_), QComboBox::sizeHint().height()}; }

void ChoiceList::setChoices(std::vector<Choice> choices) {
    choices_ = std::move(choices);
    const QSignalBlocker quiet(this);
    clear();
    for (const Choice& choice : choices_)
        addItem(choice.text, choice.code);
    if (keepsUnknown_)
        setLoadedCode(code_);
    else
        setCode(code_);
}

void ChoiceList::setReadOnly(bool readOnly) {
    readOnly_ = readOnly;
    lineEdit()->setReadOnly(readOnly);
}

void ChoiceList::setCode(const QString& code) {
    const QSignalBlocker quiet(this);
    const auto found = std::find_if(choices_.begin(), choices_.end(),
                                    [&](const Choice& choice) { return choice.code == code; });
    const bool known = found != choices_.end();
    keepsUnknown_ = false;
    code_ = known ? code : QString();
    setCurrentIndex(known ? static_cast<int>(found - choices_.begin()) : -1);
    if (!known) clearEditText();
    lineEdit()->home(false); // a long text is read from its beginning
}

void ChoiceList::setLoadedCode(const QString& code) {
    setCode(code);
    if (code_ == code) return;
    const QSignalBlocker quiet(this);
    code_ = code;
    keepsUnknown_ = true;
    setEditText(code);
    lineEdit()->home(false);
}

bool ChoiceList::isSettled() const {
    const int index = currentIndex();
    if (code_.isEmpty()) return currentText().trimmed().isEmpty();
    if (keepsUnknown_) return currentText() == code_;
    return index >= 0 && choices_[static_cast<size_t>(index)].text == currentText();
}

void ChoiceList::settle() {
    if (isSettled()) return;
    if (currentText().trimmed().isEmpty()) {
        choose(-1);
        return;
    }
    if (const int index = matchOf(currentText()); index >= 0) choose(index);
}

void ChoiceList::choose(int index) {
    const QString code = index >= 0 ? choices_[static_cast<size_t>(index)].code : QString();
    const bool changed = code != code_;
    setCode(code);
    if (changed) emit codeChanged(code_);
}

int ChoiceList::matchOf(const QString& text) const {
    const QString typed = lowerTurkish(text.trimmed());
    int best = -1;
    MatchKind bestKind = None;
    for (size_t i = 0; i < choices_.size(); ++i) {
        const MatchKind kind = matchKind(lowerTurkish(choices_[i].text), typed);
        if (kind < bestKind) {
            bestKind = kind;
            best = static_cast<int>(i);
        }
    }
    return best;
}

void ChoiceList::showMatches(const QString& typed) {
    const QString wanted = lowerTurkish(typed.trimmed());
    QStringList found[None];
    for (const Choice& choice : choices_) {
        const MatchKind kind = matchKind(lowerTurkish(choice.text), wanted);
        if (kind != None) found[kind] << choice.text;
    }
    matches_->setStringList(found[Exact] + found[Start] + found[WordStart] + found[Inside]);
}

void ChoiceList::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        completer_->popup()->hide();
        settle();
        if (!event->isAutoRepeat()) emit enterPressed();
        event->accept();
        return;
    }
    const bool turns = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down ||
                       event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown;
    if (turns && readOnly_) return;
    QComboBox::keyPressEvent(event);
}

void ChoiceList::showPopup() {
    if (!readOnly_) QComboBox::showPopup();
}

void ChoiceList::focusInEvent(QFocusEvent* event) {
    QComboBox::focusInEvent(event);
    if (event->reason() != Qt::MouseFocusReason && event->reason() != Qt::PopupFocusReason)
        lineEdit()->selectAll();
}

void ChoiceList::focusOutEvent(QFocusEvent* event) {
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason) settle();
    QComboBox::focusOutEvent(event);
}

void ChoiceList::wheelEvent(QWheelEvent* event) {
    if (hasFocus() && !readOnly_)
        QComboBox::wheelEvent(event);
    else
        event->ignore(); // scrolling a window must not change what it stands on
}

} // namespace orvan
