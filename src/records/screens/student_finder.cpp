// records/screens/student_finder.cpp — see student_finder.h.
#include "records/screens/student_finder.h"

#include "widgets/text_edit.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QStringListModel>
#include <QTimer>

namespace orvan {

namespace {

constexpr size_t kMostShown = 100; // more are no help: the person types on
constexpr int kVisible = 14, kWidth = 18;

} // namespace

StudentFinder::StudentFinder(std::function<void(StudentIndex&)> load, QWidget* parent)
    : QLineEdit(parent), load_(std::move(load)), completer_(new QCompleter(this)),
      shown_(new QStringListModel(this)) {
    setPlaceholderText(QStringLiteral("Numara, ad ya da kimlik no yazınız"));
    setClearButtonEnabled(true);
    setMinimumWidth(leastFieldWidth(this, kWidth));
    completer_->setModel(shown_);
    completer_->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    completer_->setMaxVisibleItems(kVisible);
    completer_->setWidget(this); // not setCompleter: the typed words stay as they are
    connect(this, &QLineEdit::textEdited, this, &StudentFinder::search);
    connect(this, &QLineEdit::returnPressed, this, &StudentFinder::takeMarked);
    connect(completer_, qOverload<const QModelIndex&>(&QCompleter::activated), this,
            [this](const QModelIndex& at) { take(at.row()); });
}

// The window stands first; the first letter then finds the index ready.
void StudentFinder::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    QTimer::singleShot(0, this, &StudentFinder::prepare);
}

void StudentFinder::prepare() {
    if (!fresh_) load_(index_);
    fresh_ = true;
}

void StudentFinder::search(const QString& typed) {
    prepare();
    QStringList lines;
    numbers_.clear();
    for (const StudentKey* key : index_.find(typed, kMostShown)) {
        lines << key->shown();
        numbers_ << key->number;
    }
    shown_->setStringList(lines);
    if (lines.isEmpty())
        completer_->popup()->hide();
    else
        completer_->complete();
}

void StudentFinder::takeMarked() {
    const QModelIndex marked =
        completer_->popup()->isVisible() ? completer_->popup()->currentIndex() : QModelIndex();
    take(marked.isValid() ? marked.row() : 0);
}

void StudentFinder::take(int row) {
    completer_->popup()->hide();
    if (row < 0 || row >= numbers_.size()) return;
    const QString number = numbers_[row];
    clear();
    numbers_.clear();
    emit chosen(number);
}

} // namespace orvan
