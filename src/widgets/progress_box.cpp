// widgets/progress_box.cpp — box, bar and pointer of long work.
#include "widgets/progress_box.h"

#include <algorithm>
#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvan {

namespace {

constexpr int kWaitDelay = 1000; // milliseconds before the box of work without a known length
constexpr int kPaintEvery = 50;  // milliseconds; each step of many would cost more than the work

} // namespace

ProgressBox::ProgressBox(const QString& title, int total, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
      label_(new QLabel(QStringLiteral("Lütfen bekleyiniz…"), this)), bar_(new QProgressBar(this)) {
    setObjectName(QStringLiteral("ilerleme"));
    setWindowTitle(title);
    setWindowModality(Qt::ApplicationModal);
    label_->setObjectName(QStringLiteral("adim"));
    label_->setTextFormat(Qt::PlainText);
    label_->setWordWrap(true);
    label_->setMinimumHeight(fontMetrics().lineSpacing() * 2); // the box does not jump with longer words
    label_->setAlignment(Qt::AlignLeft | Qt::AlignBottom);
    bar_->setObjectName(QStringLiteral("cubuk"));
    bar_->setAccessibleName(title);
    bar_->setRange(0, std::max(total, 0));
    bar_->setValue(0);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label_);
    layout->addWidget(bar_);
    if (total > 0) {
        stop_ = new QPushButton(QStringLiteral("&Durdur"), this);
        stop_->setObjectName(QStringLiteral("durdur"));
        layout->addWidget(stop_, 0, Qt::AlignRight);
        connect(stop_, &QPushButton::clicked, this, &ProgressBox::reject);
    }
    setFixedWidth(fontMetrics().averageCharWidth() * 64);
}

void ProgressBox::setStopText(const QString& text) {
    if (stop_) stop_->setText(text);
}

void ProgressBox::showStep(int done, const QString& text) {
    if (!text.isEmpty() && !stopped_) label_->setText(text);
    bar_->setValue(std::max(bar_->value(), done));
    if (!isVisible()) show();
}

// The work ends when it next looks; until then the box says so.
void ProgressBox::reject() {
    if (!stop_ || stopped_) return;
    stopped_ = true;
    label_->setText(QStringLiteral("Durduruluyor…"));
    bar_->setFocus();
    stop_->setEnabled(false);
}

BoxProgress::BoxProgress(const QString& title, int total)
    : box_(title, total, QApplication::activeWindow()), total_(std::max(total, 0)) {
    QApplication::setOverrideCursor(Qt::BusyCursor);
    sinceStart_.start();
}

BoxProgress::~BoxProgress() { QApplication::restoreOverrideCursor(); }

void BoxProgress::step(int done, const QString& text) {
    done_ = std::max(done_, std::min(done, total_));
    if (!text.isEmpty()) text_ = text;
    if (total_ == 0 && sinceStart_.elapsed() < kWaitDelay) return;
    const bool isDue = !sincePainted_.isValid() || sincePainted_.elapsed() >= kPaintEvery;
    if (isDue || (done_ == total_ && total_ > 0)) paint();
}

void BoxProgress::paint() {
    box_.showStep(done_, text_);
    QApplication::processEvents();
    sincePainted_.start();
}

// Looks for a click too: work that asks seldom reports its steps.
bool BoxProgress::cancelled() {
    if (sincePainted_.isValid() && sincePainted_.elapsed() >= kPaintEvery) paint();
    return box_.isStopped();
}

void BoxProgress::stopUndoesAll() { box_.setStopText(QStringLiteral("İ&ptal")); }

} // namespace orvan
