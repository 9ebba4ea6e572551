// widgets/progress_box.h — what a person sees of long work: the busy pointer at once, a bar from the first
// step on when the length is known, a please-wait box after a second when it is not. The bar never runs
// backwards.
#pragma once

#include "core/dialogs.h"

#include <QDialog>
#include <QElapsedTimer>

class QLabel;
class QProgressBar;
class QPushButton;

namespace orvan {

// The box. Esc and its close mark ask to stop, as its button does; without a button they do nothing.
class ProgressBox : public QDialog {
    Q_OBJECT

  public:
    ProgressBox(const QString& title, int total, QWidget* parent);

    void setStopText(const QString& text); // "&Durdur" at first
    void showStep(int done, const QString& text);
    bool isStopped() const { return stopped_; }
    void reject() override;

  private:
    QLabel* label_;
    QProgressBar* bar_;
    QPushButton* stop_ = nullptr;
    bool stopped_ = false;
};

class BoxProgress final : public Progress {
  public:
    BoxProgress(const QString& title, int total);
    ~BoxProgress() override;

    void step(int done, const QString& text) override;
    bool cancelled() override;
    void stopUndoesAll() override;

  private:
    void paint();
    ProgressBox box_;
    int total_;
    int done_ = 0;
    QString text_;
    QElapsedTimer sinceStart_, sincePainted_;
};

} // namespace orvan
