// widgets/choice_box.cpp — see choice_box.h.
#include "widgets/choice_box.h"

#include "core/turkish_text.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvan {

ChoiceBox::ChoiceBox(const QString& text, const QString& title, const QStringList& choices, qsizetype preset,
                     QWidget* parent)
    : QDialog(parent), find_(new QLineEdit(this)), list_(new QListWidget(this)) {
    setObjectName(QStringLiteral("secimKutusu"));
    setWindowTitle(title);
    auto* caption = new QLabel(text, this);
    caption->setTextFormat(Qt::PlainText);
    caption->setBuddy(find_);
    find_->setObjectName(QStringLiteral("ara"));
    find_->setAccessibleName(text);
    find_->setPlaceholderText(QStringLiteral("Aramak için yazınız"));
    find_->setClearButtonEnabled(true);
    find_->installEventFilter(this);
    list_->setObjectName(QStringLiteral("secenekler"));
    list_->setAccessibleName(text);
    list_->addItems(choices);
    list_->setCurrentRow(static_cast<int>(preset));
    list_->setMinimumWidth(fontMetrics().averageCharWidth() * 50);
    auto* buttons = new QDialogButtonBox(this);
    ok_ = buttons->addButton(QStringLiteral("&Tamam"), QDialogButtonBox::AcceptRole);
    ok_->setObjectName(QStringLiteral("tamam"));
    ok_->setDefault(true);
    auto* cancel = buttons->addButton(QStringLiteral("İ&ptal"), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("iptal"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(caption);
    layout->addWidget(find_);
    layout->addWidget(list_);
    layout->addWidget(buttons);
    connect(find_, &QLineEdit::textEdited, this, &ChoiceBox::filter);
    connect(find_, &QLineEdit::textChanged, this, [this](const QString& now) {
        if (now.isEmpty()) filter(now); // the clear button
    });
    connect(list_, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    connect(list_, &QListWidget::currentRowChanged, this, [this](int row) { ok_->setEnabled(row >= 0); });
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    find_->setFocus();
}

qsizetype ChoiceBox::chosen() const { return list_->currentRow(); }

void ChoiceBox::filter(const QString& typed) {
    int first = -1;
    for (int row = 0; row < list_->count(); ++row) {
        const bool shown = containsTurkish(list_->item(row)->text(), typed);
        list_->item(row)->setHidden(!shown);
        if (shown && first < 0) first = row;
    }
    const QListWidgetItem* current = list_->currentItem();
    if (!current || current->isHidden()) list_->setCurrentRow(first);
}

bool ChoiceBox::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown) {
            QCoreApplication::sendEvent(list_, event);
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace orvan
